#pragma once

#include <algorithm>
#include <string_view>

// Pieces of a text that is in memory whole. A file of lines of any length goes through LineReader.
namespace korvex::platform {

// The text up to a mark, which is removed with it.
inline std::string_view take_until(std::string_view& text, char mark) {
  const std::size_t end = std::min(text.find(mark), text.size());
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return taken;
}

// A line, which may end in a carriage return as well.
inline std::string_view take_line(std::string_view& text) {
  std::string_view line = take_until(text, '\n');
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The text without the blanks around it.
inline std::string_view trimmed(std::string_view text, std::string_view blanks = " \t") {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// What some programs write in front of UTF-8.
inline void skip_byte_order_mark(std::string_view& text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (text.starts_with(mark)) text.remove_prefix(mark.size());
}

// Decimal numbers in ASCII, whatever the user's locale.

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
