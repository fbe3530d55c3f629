#pragma once

#include <cstdint>

#include "control/col_main.h"

namespace korvex {

// Whether stored settings still fit the item: the same attribute and as many digits. In a table,
// dates and timestamps stand for each other.
bool settings_fit(const ItemAttributes& item, const FmtColRec& stored, LayoutKind layout_kind);

// Reads the settings file and brings it together with the items of the control file: every item
// with settings gets them copied into its display, nullable columns may get "Init Null", a
// reference to a vanished item becomes an initial value.
//
// Answers how many items have settings, 0 without a settings file. When
// an item's settings no longer fit its attribute or digits, the settings file is deleted, the user
// is told (-70), `main.mismatch` is set and the answer is 1; no level is current then.
Result<std::int32_t> reconcile(ClColMain& main);

}  // namespace korvex
