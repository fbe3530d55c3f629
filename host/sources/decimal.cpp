#include "host/sources/decimal.h"

#include <algorithm>

namespace korvex::sources {
namespace {

constexpr unsigned most_digits = 18;

// One unit of so many decimals, in units of the most.
constexpr std::int64_t unit_of(unsigned decimals) {
  std::int64_t unit = 1;
  for (; decimals < most_digits; ++decimals) unit *= 10;
  return unit;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::optional<Decimal> Decimal::parse(std::string_view text) {
  const bool is_negative = text.starts_with('-');
  if (is_negative || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
  if (whole.empty() || whole.size() > most_digits || fraction.size() > most_digits ||
      (fraction.empty() && point < text.size())) {
    return std::nullopt;
  }
  std::string digits(whole);
  digits += fraction;
  if (!std::all_of(digits.begin(), digits.end(), is_digit)) return std::nullopt;
  digits.append(most_digits - fraction.size(), '0');
  Decimal number;
  for (const char digit : digits) number.units_ = number.units_ * 10 + (digit - '0');
  if (is_negative) number.units_ = -number.units_;
  number.decimals_ = static_cast<unsigned>(fraction.size());
  return number;
}

Decimal Decimal::of_units(std::int64_t units, unsigned decimals) {
  Decimal number;
  number.units_ = Units{units} * unit_of(decimals);
  number.decimals_ = decimals;
  return number;
}

std::optional<std::int64_t> Decimal::in_units(unsigned decimals) const {
  const std::int64_t unit = unit_of(decimals);
  const Units units = units_ / unit;
  const auto number = static_cast<std::int64_t>(units);
  if (units_ % unit != 0 || number != units) return std::nullopt;
  return number;
}

bool Decimal::add(const Decimal& other) {
  Units sum = 0;
  if (__builtin_add_overflow(units_, other.units_, &sum)) return false;
  units_ = sum;
  decimals_ = std::max(decimals_, other.decimals_);
  return true;
}

std::string Decimal::text() const {
  std::string digits;
  for (Units left = units_; left != 0 || digits.size() <= most_digits; left /= 10) {
    const int digit = static_cast<int>(left % 10);
    digits += static_cast<char>('0' + (digit < 0 ? -digit : digit));
  }
  std::reverse(digits.begin(), digits.end());
  const std::size_t whole = digits.size() - most_digits;
  std::string text = (units_ < 0 ? "-" : "") + digits.substr(0, whole);
  if (decimals_ > 0) text += "." + digits.substr(whole, decimals_);
  return text;
}

}  // namespace korvex::sources
