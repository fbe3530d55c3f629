#include "host/layout/item_size.h"

#include <limits>

namespace korvex::host {

namespace {

constexpr std::int64_t national_character_bytes = 2;
constexpr std::int64_t largest_size = std::numeric_limits<std::int32_t>::max();

// The digits of attributes that have only one size.
std::optional<std::int32_t> fixed_digits(Attribute attribute) {
  switch (attribute) {
    case attribute::integer:
      return 10;
    case attribute::small_integer:
      return 5;
    case attribute::date:
      return 8;
    case attribute::time:
      return 6;
    case attribute::timestamp:
      return 15;
    default:
      return std::nullopt;
  }
}

bool is_number(Attribute attribute) {
  const DataKind kind = traits_of(attribute).kind;
  return kind == DataKind::decimal || kind == DataKind::number_or_text ||
         kind == DataKind::bare_number;
}

// Bytes of a number beside its digits.
std::int64_t sign_and_point(const ItemAttributes& item) {
  return (is_on(item.signed_flag) ? 1 : 0) + (item.decimals > 0 ? 1 : 0);
}

std::int64_t digits_from_length(const ItemAttributes& item, std::int64_t length) {
  if (is_national(item.attribute)) return length / national_character_bytes;
  return is_number(item.attribute) ? length - sign_and_point(item) : length;
}

std::int64_t length_from_digits(const ItemAttributes& item, std::int64_t digits) {
  if (is_national(item.attribute)) return digits * national_character_bytes;
  return is_number(item.attribute) ? digits + sign_and_point(item) : digits;
}

}  // namespace

std::optional<SizeError> complete_size(const GivenSize& given, ItemAttributes& item) {
  std::optional<std::int64_t> digits = given.digits;
  if (!digits) digits = fixed_digits(item.attribute);
  if (!digits && !given.length) {
    return SizeError{"digits", "[[item]] has neither digits nor length, expected one of them"};
  }
  if (!digits) digits = digits_from_length(item, *given.length);
  if (*digits < 0) {
    return SizeError{"length", "length is " + std::to_string(*given.length) +
                                   ", expected room for the sign and the point"};
  }
  const std::int64_t length = given.length ? *given.length : length_from_digits(item, *digits);
  if (length > largest_size) {
    return SizeError{"digits", "digits is " + std::to_string(*digits) +
                                   ", expected a length of at most " +
                                   std::to_string(largest_size) + " bytes"};
  }
  item.digits = static_cast<std::int32_t>(*digits);
  item.length = static_cast<std::int32_t>(length);
  if (item.decimals > item.digits) item.decimals = 0;
  return std::nullopt;
}

}  // namespace korvex::host
