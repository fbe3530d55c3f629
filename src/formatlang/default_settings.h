#pragma once

#include <optional>
#include <string>

#include "values/attributes.h"

namespace korvex {

// The texts of a range: its format and its start, end and increment values (code page 932).
struct RangeTexts {
  std::string format;
  std::string start;
  std::string end;
  std::string increment;
};

// The settings that an item gets from its attribute before anybody changes them. Nothing when the
// attribute has no default or the item's digits make none.
//
// These are proposals for a new item; the format dialog proposes formats by a table of its own.
std::optional<RangeTexts> default_settings(const ItemAttributes& item);

// The end value that an item of attribute 1 to 28 gets when none is entered: the largest that its
// digits hold. Empty for other attributes.
std::string largest_value_text(const ItemAttributes& item);

}  // namespace korvex
