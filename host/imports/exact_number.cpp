#include "host/imports/exact_number.h"

#include <algorithm>
#include <charconv>

#include "host/text/any_case.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

template <typename Number>
std::optional<Number> number_of_digits(std::string_view text, int base) {
  Number number = 0;
  const auto [stop, failure] = std::from_chars(text.begin(), text.end(), number, base);
  if (failure != std::errc() || stop != text.end()) return std::nullopt;
  return number;
}

// The decimal digits of a hexadecimal number; any other text as it is.
std::string in_decimal(std::string_view text) {
  std::optional<std::uint64_t> number;
  if (is_same_in_any_case(text.substr(0, 2), "0x")) {
    number = number_of_digits<std::uint64_t>(text.substr(2), 16);
  }
  return number ? std::to_string(*number) : std::string(text);
}

}  // namespace

std::optional<ExactNumber> ExactNumber::parse(std::string_view text) {
  ExactNumber made;
  text = platform::trimmed(text);
  made.is_negative_ = text.starts_with('-');
  if (made.is_negative_ || text.starts_with('+')) text.remove_prefix(1);
  const std::string number = in_decimal(text);
  std::string_view digits = number;
  const std::size_t mark = std::min(digits.find_first_of("eE"), digits.size());
  std::optional<int> exponent = 0;
  if (mark < digits.size()) {
    std::string_view power = digits.substr(mark + 1);
    if (power.starts_with('+')) power.remove_prefix(1);
    exponent = number_of_digits<int>(power, 10);
  }
  digits = digits.substr(0, mark);
  made.digits_ = platform::take_until(digits, '.');
  const std::size_t whole = made.digits_.size();
  made.digits_ += digits;
  if (!exponent || made.digits_.empty() ||
      !std::all_of(made.digits_.begin(), made.digits_.end(), platform::is_digit)) {
    return std::nullopt;
  }
  made.digits_.erase(made.digits_.find_last_not_of('0') + 1);
  const std::size_t zeros = std::min(made.digits_.find_first_not_of('0'), made.digits_.size());
  made.digits_.erase(0, zeros);
  if (made.digits_.empty()) return ExactNumber();
  made.point_ = static_cast<std::int64_t>(whole) - static_cast<std::int64_t>(zeros) + *exponent;
  return made;
}

bool ExactNumber::operator<(const ExactNumber& other) const {
  const auto side = [](const ExactNumber& number) {
    return number.digits_.empty() ? 0 : number.is_negative_ ? -1 : 1;
  };
  if (side(*this) != side(other)) return side(*this) < side(other);
  const ExactNumber& nearer = is_negative_ ? other : *this;
  const ExactNumber& farther = is_negative_ ? *this : other;
  if (nearer.point_ != farther.point_) return nearer.point_ < farther.point_;
  return nearer.digits_ < farther.digits_;
}

std::optional<ExactNumber::Units> ExactNumber::in_units(int decimals) const {
  constexpr std::int64_t most_digits = 18;
  const std::int64_t places = point_ + decimals;
  if (places > most_digits) return std::nullopt;
  const auto taken = static_cast<std::size_t>(std::max<std::int64_t>(places, 0));
  std::string units = digits_.substr(0, taken);
  units.resize(taken, '0');
  const auto number = platform::number_of_digits<std::int64_t>(units);
  return Units{is_negative_ ? -number : number, digits_.size() <= taken};
}

}  // namespace korvex::host
