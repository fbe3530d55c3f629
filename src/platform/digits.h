#pragma once

#include <string_view>

// Decimal numbers in ASCII, whatever the user's locale.
namespace korvex::platform {

constexpr bool is_digit(char byte) { return byte >= '0' && byte <= '9'; }

// The number that digits say, without a sign. Whoever calls knows that it fits, or that it may
// wrap.
template <typename Number>
constexpr Number number_of_digits(std::string_view digits) {
  Number number = 0;
  for (const char digit : digits) number = number * 10 + static_cast<Number>(digit - '0');
  return number;
}

// 10 to the power of an exponent from 0 on. Whoever calls knows that it fits.
template <typename Number>
constexpr Number power_of_ten(int exponent) {
  Number power = 1;
  for (; exponent > 0; --exponent) power *= 10;
  return power;
}

}  // namespace korvex::platform
