#pragma once

#include <cstdint>
#include <vector>

#include "format/records.h"
#include "formatlang/attributes.h"
#include "formatlang/default_settings.h"

namespace korvex {

// Largest increment, in units of the value as written.
inline constexpr double max_increment = 9.0;

// A range that passed every check, ready to be stored.
struct CheckedRange {
  std::vector<FmtItemRec> elements;
  FmtValRec increment = {};
  std::int32_t lead_element = 0;
  std::int32_t variable_count = 0;
  std::int32_t digits = 0;  // the item's effective digits
};

// Validates a format with its start, end and increment texts against the item and works out every
// element's values, direction, span and texts. 0, or the code of the first rule broken; `range` is
// then not to be used.
//
// `range.increment` may hold the item's previous increment: a format without directives keeps it.
std::int32_t check_range(const ItemAttributes& item, const RangeTexts& texts, CheckedRange& range);

}  // namespace korvex
