#include "lists/enumeration_value.h"

#include "platform/codepage.h"
#include "platform/text_lines.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

struct NumberScan {
  bool has_sign = false;
  bool has_point = false;
  std::int64_t integer_digits = 0;
  std::int64_t decimals = 0;
};

std::int64_t length_of(std::string_view value) { return static_cast<std::int64_t>(value.size()); }

ErrorCode scan_number(std::string_view value, NumberScan& scan) {
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    if (platform::is_digit(c)) continue;
    if (c == '+' || c == '-') {
      if (scan.has_sign) return error::enumeration_two_signs;
      if (i != 0) return error::enumeration_inner_sign;
      scan.has_sign = true;
    } else if (c == '.') {
      if (scan.has_point) return error::enumeration_two_points;
      scan.has_point = true;
      scan.integer_digits = static_cast<std::int64_t>(i) - (scan.has_sign ? 1 : 0);
      scan.decimals = length_of(value) - static_cast<std::int64_t>(i) - 1;
    } else {
      return error::enumeration_not_numeric;
    }
  }
  if (!scan.has_point) scan.integer_digits = length_of(value) - (scan.has_sign ? 1 : 0);
  return error::none;
}

// How many characters a value may have.
std::int64_t number_length_limit(const ItemAttributes& item, bool has_sign) {
  if (is_on(item.signed_flag)) return has_sign ? item.length : std::int64_t{item.length} - 1;
  return item.decimals != 0 ? item.length : item.digits;
}

ErrorCode check_number(const ItemAttributes& item, std::string_view value) {
  NumberScan scan;
  if (const ErrorCode result = scan_number(value, scan); result != error::none) return result;
  const bool is_signed = is_on(item.signed_flag);
  if (length_of(value) > number_length_limit(item, scan.has_sign)) {
    return error::enumeration_value_too_long;
  }
  if (!is_signed && scan.has_sign) return error::enumeration_sign_on_unsigned;
  if (item.decimals == 0)
    return scan.has_point ? error::enumeration_decimals_not_allowed : error::none;
  if (scan.decimals > item.decimals) return error::enumeration_too_many_decimals;
  const std::int64_t frame = is_signed ? 2 : 1;  // point and sign
  const std::int64_t most_integer_digits = std::int64_t{item.length} - item.decimals - frame;
  return scan.integer_digits > most_integer_digits ? error::enumeration_too_many_integer_digits
                                                   : error::none;
}

ErrorCode check_length(std::string_view value, std::int64_t limit) {
  return length_of(value) > limit ? error::enumeration_value_too_long : error::none;
}

ErrorCode check_full_width(const ItemAttributes& item, std::string_view value) {
  if (const ErrorCode result = check_length(value, item.length); result != error::none)
    return result;
  if (value.size() % 2 != 0) return error::enumeration_not_full_width;
  for (std::size_t i = 0; i < value.size(); i += 2) {
    if (!platform::is_legal_double_byte(value[i], value[i + 1])) {
      return error::enumeration_not_full_width;
    }
  }
  return error::none;
}

}  // namespace

EnumerationRule::EnumerationRule(const ItemAttributes& item)
    : item_(item),
      kind_(traits_of(item.attribute).kind),
      limit_(effective_digits(item)),
      takes_any_text_(is_character(item.attribute)) {}

ErrorCode EnumerationRule::check_closely(std::string_view value) const {
  if (takes_any_text_) return check_length(value, limit_);
  switch (kind_) {
    case DataKind::decimal:
      return check_number(item_, value);
    case DataKind::national:
      return check_full_width(item_, value);
    case DataKind::number_or_text:
      return item_.digits != 0 ? check_number(item_, value) : check_length(value, item_.length);
    default:
      return error::enumeration_not_allowed;
  }
}

}  // namespace korvex
