#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvex {

// How the value of a number element is written.
struct NumberShape {
  std::int32_t width = 0;  // characters of the text, sign and point included
  std::int32_t digits = 0;
  std::int32_t decimals = 0;
};

// The last `width` characters of the 18-digit decimal text of high * 10^9 + low, with a point
// before the last `decimals` digits ("0." where the element has no integer digits) and, unless
// `sign` is 0, that character before them. A wider element gets the whole text.
std::string number_text(std::int64_t high, std::int64_t low, const NumberShape& shape, char sign);

// The number at the beginning of the text: optional blanks, optional sign, digits.
// 0 without digits; saturates at the ends of 64 bits.
std::int64_t decimal_prefix(std::string_view text);

// The same for a decimal fraction with an optional exponent; reads neither hexadecimal nor infinity
// nor the user's locale.
double fraction_prefix(std::string_view text);

}  // namespace korvex
