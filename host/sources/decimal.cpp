#include "host/sources/decimal.h"

#include <algorithm>
#include <array>

#include "platform/text_lines.h"

namespace korvex::sources {
namespace {

// On either side of the point.
constexpr unsigned most_digits = most_decimals;

// One unit of so many decimals, in units of the most.
constexpr std::array<std::int64_t, most_digits + 1> units_of_decimals = [] {
  std::array<std::int64_t, most_digits + 1> units = {};
  for (unsigned decimals = 0; decimals <= most_digits; ++decimals) {
    units[decimals] =
        platform::power_of_ten<std::int64_t>(static_cast<int>(most_digits - decimals));
  }
  return units;
}();

constexpr std::int64_t unit_of(unsigned decimals) { return units_of_decimals[decimals]; }

// Up to the most; nothing where there is anything else.
std::optional<std::int64_t> read_digits(std::string_view digits) {
  if (!std::all_of(digits.begin(), digits.end(), platform::is_digit)) return std::nullopt;
  return platform::number_of_digits<std::int64_t>(digits);
}

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
  const std::optional<std::int64_t> before = read_digits(whole);
  const std::optional<std::int64_t> after = read_digits(fraction);
  if (!before || !after) return std::nullopt;
  Decimal number;
  number.decimals_ = static_cast<unsigned>(fraction.size());
  number.units_ = Units{*before} * unit_of(0) + Units{*after} * unit_of(number.decimals_);
  if (is_negative) number.units_ = -number.units_;
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

bool Decimal::multiply(std::uint64_t factor) {
  Units units = 0;
  if (__builtin_mul_overflow(units_, factor, &units)) return false;
  units_ = units;
  return true;
}

void Decimal::append(std::string& out) const {
  // As many digits as Units can have, from the last one on.
  std::array<char, 40> digits;
  std::size_t first = digits.size();
  for (Units left = units_; left != 0 || digits.size() - first <= most_digits; left /= 10) {
    const int digit = static_cast<int>(left % 10);
    digits[--first] = static_cast<char>('0' + (digit < 0 ? -digit : digit));
  }
  const std::size_t point = digits.size() - most_digits;
  if (units_ < 0) out += '-';
  out.append(&digits[first], point - first);
  if (decimals_ == 0) return;
  out += '.';
  out.append(&digits[point], decimals_);
}

}  // namespace korvex::sources
