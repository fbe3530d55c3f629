#include <algorithm>

#include "formatlang/format_parser.h"
#include "values/error_codes.h"
#include "values/number_text.h"

namespace korvex {

namespace {

constexpr std::int32_t max_digits_in_text = 18;

constexpr std::int32_t short_date_digits = 6;
constexpr std::int32_t long_date_digits = 8;
constexpr std::int32_t time_digits = 6;
constexpr std::int32_t time_width = 8;
constexpr std::int32_t timestamp_digits = 15;
constexpr std::int32_t timestamp_width = 19;

// A size that no item holds stands for every larger one, so that sums stay small.
constexpr std::int64_t saturated_size = 1'000'000;

std::int64_t read_size(std::string_view text) {
  return std::clamp(decimal_prefix(text), -saturated_size, saturated_size);
}

ErrorCode read_whole_number(const ItemAttributes& item, std::string_view size_text,
                            FmtItemRec& element) {
  const std::int64_t size = read_size(size_text);
  const std::int64_t integer_digits = std::int64_t{item.digits} - item.decimals;
  if (size < 1 || size > item.length || (item.decimals > 0 && size > integer_digits)) {
    return error::bad_format_digits;
  }
  element.digits = element.width = static_cast<std::int32_t>(size);
  return error::none;
}

ErrorCode read_fraction(const ItemAttributes& item, std::string_view size_text, std::size_t point,
                        FmtItemRec& element) {
  const std::string_view decimals_text = size_text.substr(point + 1);
  if (decimals_text.empty() || decimals_text.find('.') != std::string_view::npos) {
    return error::bad_format_digits;
  }
  const std::int64_t digits = read_size(size_text.substr(0, point));
  const std::int64_t decimals = read_size(decimals_text);
  if (digits < 0 || decimals < 0) return error::bad_format_digits;
  if (digits > item.digits || (decimals == 0 && item.decimals > 0) || decimals > item.decimals) {
    return error::bad_format_digits;
  }
  if (digits + decimals > max_number_digits) return error::number_overflow;
  element.digits = static_cast<std::int32_t>(digits);
  element.decimals = static_cast<std::int32_t>(decimals);
  const int leading_zero = digits == 0 ? 1 : 0;
  element.width = static_cast<std::int32_t>(digits + decimals + 1 + leading_zero);
  return error::none;
}

Result<std::int32_t> read_number(const ItemAttributes& item, std::string_view directive,
                                 bool is_first, FmtItemRec& element) {
  const bool is_signed = directive.ends_with('D');
  if ((!is_signed && !directive.ends_with('U')) || directive.ends_with("YMD")) {
    return error::bad_attribute_characters;
  }
  const std::string_view size_text = directive.substr(0, directive.size() - 1);
  ErrorCode result = error::none;
  if (size_text.empty()) {
    element.digits = element.width = 1;
  } else if (const auto point = size_text.find('.'); point != std::string_view::npos) {
    result = read_fraction(item, size_text, point, element);
  } else {
    result = read_whole_number(item, size_text, element);
  }
  if (result != error::none) return result;

  element.kind = format_kind::unsigned_number;
  if (is_signed) {
    if (!is_on(item.signed_flag)) return error::signed_format_for_unsigned;
    if (!is_first) return error::signed_part_not_first;
    element.kind = format_kind::signed_number;
    ++element.width;
  }
  return element.digits + element.decimals;
}

Result<std::int32_t> read_number_in_text(std::string_view directive, bool is_first,
                                         FmtItemRec& element) {
  const std::string_view size_text = directive.substr(0, directive.size() - 1);
  if (directive.find('.') != std::string_view::npos) return error::decimals_in_character_item;
  const std::int64_t size = size_text.empty() ? 1 : read_size(size_text);
  if (size < 1 || size > max_digits_in_text) return error::bad_format_digits;
  element.digits = element.width = static_cast<std::int32_t>(size);
  if (directive.ends_with('U')) {
    element.kind = format_kind::unsigned_number_in_text;
    return element.digits;
  }
  if (!is_first) return error::signed_part_not_first;
  element.kind = format_kind::signed_number;
  element.sign = number_sub_kind::with_sign;
  ++element.width;
  return element.width;
}

Result<std::int32_t> read_date(std::string_view directive, FmtItemRec& element) {
  const std::string_view size_text = directive.substr(0, directive.size() - 3);
  const std::int64_t year_digits = size_text.empty() ? 2 : read_size(size_text);
  if (year_digits != 2 && year_digits != 4) return error::bad_format_digits;
  element.kind = directive.ends_with("YMD") ? format_kind::date : format_kind::date_unchecked;
  element.digits = year_digits == 2 ? short_date_digits : long_date_digits;
  element.width = element.digits;
  return element.digits;
}

bool is_date(std::string_view directive) {
  return directive.ends_with("YMD") || directive.ends_with("YMA");
}

Result<std::int32_t> read_time(std::string_view directive, FmtItemRec& element) {
  if (directive != "T") return error::bad_format_digits;
  element.kind = format_kind::time;
  element.digits = time_digits;
  element.width = time_width;
  return time_digits;
}

Result<std::int32_t> read_timestamp(std::string_view directive, FmtItemRec& element) {
  if (directive != "TS") return error::bad_format_digits;
  element.kind = format_kind::timestamp;
  element.digits = timestamp_digits;
  element.width = timestamp_width;
  return timestamp_digits;
}

// "S", "s" and "N"; `bytes_per_character` is what one full-width character adds to the size.
Result<std::int32_t> read_characters(std::string_view directive, int bytes_per_character,
                                     FmtItemRec& element) {
  const std::string_view size_text = directive.substr(0, directive.size() - 1);
  const std::int64_t size = size_text.empty() ? 1 : read_size(size_text);
  if (size < 1) return error::bad_format_digits;
  element.digits = element.width = static_cast<std::int32_t>(size);
  if (directive.ends_with('N')) {
    element.kind = format_kind::national_character;
    return bytes_per_character * element.digits;
  }
  if (size > max_letters) return error::variable_part_too_long;
  element.kind = directive.ends_with('S') ? format_kind::upper_letters : format_kind::lower_letters;
  return element.digits;
}

Result<std::int32_t> read_in_character_item(std::string_view directive, bool is_first,
                                            FmtItemRec& element) {
  if (directive.ends_with('T')) return read_time(directive, element);
  if (is_date(directive)) return read_date(directive, element);
  if (directive.ends_with("TS")) return read_timestamp(directive, element);
  if (directive.ends_with('S') || directive.ends_with('s') || directive.ends_with('N')) {
    return read_characters(directive, 2, element);
  }
  if (directive.ends_with('D') || directive.ends_with('U')) {
    return read_number_in_text(directive, is_first, element);
  }
  return error::bad_attribute_characters;
}

}  // namespace

Result<std::int32_t> read_directive(const ItemAttributes& item, ValueClass item_class,
                                    std::string_view directive, bool is_first,
                                    FmtItemRec& element) {
  switch (item_class) {
    case ValueClass::numeric:
      return read_number(item, directive, is_first, element);
    case ValueClass::character:
      return read_in_character_item(directive, is_first, element);
    case ValueClass::national:
      return directive.ends_with('N') ? read_characters(directive, 1, element)
                                      : error::bad_attribute_characters;
    case ValueClass::date:
      return is_date(directive) ? read_date(directive, element) : error::bad_attribute_characters;
    case ValueClass::time:
      return directive.ends_with('T') ? read_time(directive, element)
                                      : error::bad_attribute_characters;
    case ValueClass::timestamp:
      return directive.ends_with("TS") ? read_timestamp(directive, element)
                                       : error::bad_attribute_characters;
    default:
      return error::bad_attribute;
  }
}

}  // namespace korvex
