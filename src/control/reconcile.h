#pragma once

#include <cstdint>

#include "control/col_main.h"

namespace korvex {

// Whether stored settings still fit the item: the same attribute and as many digits. In a table,
// settings of dates fit timestamps, and the other way round.
bool settings_fit(const ItemAttributes& item, const FmtColRec& stored, LayoutKind layout_kind);

// Reads the settings file and compares it with the items of the control file: settings are copied
// into the display of their item, nullable columns may get "Init Null", and a reference to an item
// that no longer exists becomes an initial value.
//
// Returns how many items have settings, 0 without a settings file. When an item's settings no
// longer fit its attribute or digits, the settings file is deleted, a message says so (-70),
// `main.mismatch` is set and the result is 1; no level is current then.
Result<std::size_t> reconcile(ClColMain& main);

}  // namespace korvex
