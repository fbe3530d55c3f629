#pragma once

#include <cstdint>
#include <string_view>

#include "values/attributes.h"
#include "values/error_codes.h"

namespace korvex {

// What an item asks of the values of its value list.
class EnumerationRule {
 public:
  explicit EnumerationRule(const ItemAttributes& item);

  // The code of the first rule that the value breaks: -125 to -134, or -137 for an attribute
  // that takes no enumeration.
  ErrorCode check(std::string_view value) const {
    const bool is_fitting_text =
        takes_any_text_ && static_cast<std::int64_t>(value.size()) <= limit_;
    return is_fitting_text ? error::none : check_closely(value);
  }

 private:
  ErrorCode check_closely(std::string_view value) const;

  ItemAttributes item_;
  DataKind kind_;
  std::int64_t limit_;  // of characters, for a text
  bool takes_any_text_;
};

}  // namespace korvex
