#include "values/number_text.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/text_lines.h"
#include "values/records.h"

namespace korvex {

namespace {

// A half padded with zeros on the left to nine characters, its sign counting as one of them.
std::string half_text(std::int64_t half) {
  const std::string digits = std::to_string(half);
  const auto size = static_cast<std::size_t>(half_digits);
  return digits.size() < size ? std::string(size - digits.size(), '0') + digits : digits;
}

bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Skips blanks and takes one sign; true for a minus.
bool take_sign(std::string_view& text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool negative = text.front() == '-';
  text.remove_prefix(1);
  return negative;
}

}  // namespace

std::string number_text(std::int64_t high, std::int64_t low, const NumberShape& shape, char sign) {
  std::string text = half_text(high) + half_text(low);
  if (shape.decimals > 0) {
    const auto decimals = std::min(static_cast<std::size_t>(shape.decimals), text.size());
    text.insert(text.size() - decimals, shape.digits == 0 ? "0." : ".");
  }
  const auto width = static_cast<std::size_t>(std::max(shape.width, 0));
  if (sign != 0) {
    const std::size_t unsigned_width = width > 0 ? width - 1 : 0;
    text.insert(text.size() > unsigned_width ? text.size() - unsigned_width : 0, 1, sign);
  }
  return text.size() > width ? text.substr(text.size() - width) : text;
}

std::int64_t decimal_prefix(std::string_view text) {
  const bool negative = take_sign(text);
  constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max();
  std::int64_t value = 0;
  for (; !text.empty() && platform::is_digit(text.front()); text.remove_prefix(1)) {
    const std::int64_t digit = text.front() - '0';
    value = value > (limit - digit) / 10 ? limit : value * 10 + digit;
  }
  return negative ? -value : value;
}

double fraction_prefix(std::string_view text) {
  const bool negative = take_sign(text);
  if (text.empty() || !(platform::is_digit(text.front()) || text.front() == '.')) return 0;
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) value = std::numeric_limits<double>::max();
  return negative ? -value : value;
}

}  // namespace korvex
