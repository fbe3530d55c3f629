#pragma once

#include <cstdint>
#include <vector>

#include "formatlang/default_settings.h"
#include "values/attributes.h"
#include "values/records.h"
#include "values/result.h"

namespace korvex {

// Largest increment, in units of the value as written.
inline constexpr double max_increment = 9.0;

// A range that passed every check, ready to be stored.
struct CheckedRange {
  std::vector<FmtItemRec> elements;
  FmtValRec increment = {};
  ElementNumber lead_element = ElementNumber::none;
  std::int32_t variable_count = 0;
  std::int32_t digits = 0;  // the item's effective digits
};

// Validates a format with its start, end and increment texts against the item and works out every
// element's values, direction, span and texts. The code is that of the first rule broken.
//
// A format without directives keeps the item's previous increment.
Result<CheckedRange> check_range(const ItemAttributes& item, const RangeTexts& texts,
                                 const FmtValRec& previous_increment = {});

}  // namespace korvex
