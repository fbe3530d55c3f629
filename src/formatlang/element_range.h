#pragma once

#include <cstdint>
#include <string_view>

#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

// A value text cut into its sign and the rest.
struct SignedText {
  Sign sign;  // Sign::plus without one
  std::string_view digits;
};

SignedText split_sign(std::string_view text);

// Completes one variable element from its start and end value: value records, direction, span and
// normalised texts, and the increment as the element reads it. `is_first` marks the first variable
// element, the only one whose values have a sign. Answers the code of the first rule broken.
ErrorCode check_element(std::string_view start, std::string_view end, std::string_view increment,
                        bool is_first, FmtItemRec& element, FmtValRec& increment_value);

}  // namespace korvex
