#include "host/sources/text_shape.h"

#include <algorithm>
#include <utility>

namespace korvex::sources {
namespace {

// Zeros before the number and after its point.
std::string padded(Decimal number, std::size_t whole_digits, std::size_t decimals) {
  number.add(Decimal::of_units(0, static_cast<unsigned>(decimals)));
  std::string text;
  number.append(text);
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  const std::size_t digits = std::min(text.find('.'), text.size()) - sign;
  text.insert(sign, whole_digits - std::min(digits, whole_digits), '0');
  return text;
}

}  // namespace

TextSize size_of(std::string_view text) {
  TextSize size = {0, 0};
  for (const char byte : text) {
    const auto bits = static_cast<unsigned char>(byte);
    const bool is_first = (bits & 0xC0) != 0x80;
    size.characters += is_first ? 1 : 0;
    size.bytes += !is_first ? 0 : bits < 0x80 ? 1 : 2;
  }
  return size;
}

TextSize sum(TextSize a, TextSize b) {
  return {sum(a.characters, b.characters), sum(a.bytes, b.bytes)};
}

TextSize product(TextSize size, std::uint64_t times) {
  return {product(size.characters, times), product(size.bytes, times)};
}

TextSize larger(TextSize a, TextSize b) {
  return {std::max(a.characters, b.characters), std::max(a.bytes, b.bytes)};
}

TextSize smaller(TextSize a, TextSize b) {
  return {std::min(a.characters, b.characters), std::min(a.bytes, b.bytes)};
}

void NumberExtremes::add(std::string_view text) {
  const std::optional<Decimal> number = Decimal::parse(text);
  // An item may lack room for a sign that the ends do not show.
  const bool is_negative = text.starts_with('-');
  const bool has_other_sign =
      text.starts_with('+') || (is_negative && number && !(*number < Decimal()));
  are_numbers_ = are_numbers_ && number && !has_other_sign;
  if (!are_numbers_) return;
  if (!least_ || *number < *least_) least_ = number;
  if (!most_ || *most_ < *number) most_ = number;
  if (is_negative) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  whole_digits_ = std::max(whole_digits_, point);
  decimals_ = std::max(decimals_, text.size() - std::min(point + 1, text.size()));
}

std::optional<Extremes> NumberExtremes::result() const {
  if (!are_numbers_ || !least_) return std::nullopt;
  return Extremes{.least = padded(*least_, whole_digits_, decimals_),
                  .most = padded(*most_, whole_digits_, decimals_)};
}

TextShape shape_within(Extremes extremes) {
  TextShape shape;
  shape.always_made = true;
  shape.most = larger(size_of(extremes.least), size_of(extremes.most));
  shape.extremes = std::move(extremes);
  return shape;
}

TextShape shape_of_counts(std::uint64_t first, ways::Count last) {
  TextShape shape = shape_within({.least = std::to_string(first),
                                  .most = std::to_string(last.most),
                                  .are_reached = last.is_exact()});
  shape.only_digits = shape.only_plain = true;
  return shape;
}

}  // namespace korvex::sources
