#include "formatlang/value_parser.h"

#include <algorithm>
#include <string>

#include "platform/codepage.h"
#include "platform/text_lines.h"
#include "values/error_codes.h"
#include "values/number_text.h"
#include "values/ordinals.h"
#include "values/record_text.h"

namespace korvex {

namespace {

// The counting part of a longer value: its last letters or its last two full-width characters.
constexpr std::size_t counted_letters = 5;
constexpr std::size_t counted_full_width_bytes = 4;

std::string_view without_leading_zeros(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of('0'), text.size()));
}

// The lengths around the decimal point against what the element holds.
ErrorCode check_number_lengths(const FmtItemRec& element, std::string_view text) {
  const auto digits = static_cast<std::size_t>(element.digits);
  const auto decimals = static_cast<std::size_t>(element.decimals);
  const auto point = text.find('.');
  if (element.decimals == 0) {
    if (point != std::string_view::npos) return error::decimals_prohibited;
    return text.size() > digits ? error::bad_value_digits : error::none;
  }
  if (point == std::string_view::npos)
    return text.size() > digits ? error::bad_value_digits : error::none;
  if (digits != 0 && point > digits) return error::bad_value_digits;
  return text.size() - point - 1 > decimals ? error::bad_value_digits : error::none;
}

}  // namespace

ErrorCode parse_number(const FmtItemRec& element, std::string_view entered, FmtValRec& value) {
  const auto entered_point = entered.find('.');
  if (element.kind == format_kind::unsigned_number_in_text) {
    if (entered_point != std::string_view::npos) return error::decimals_prohibited;
    if (element.decimals != 0) return error::empty_format;
  }
  if (entered.starts_with('.') || entered.ends_with('.')) return error::bad_decimal_point;

  std::string text(entered.starts_with("0.") ? entered : without_leading_zeros(entered));
  if (text.starts_with('.')) text.insert(0, 1, '0');
  if (text.size() > max_value_length) return error::bad_value_digits;
  if (const ErrorCode result = check_number_lengths(element, text); result != error::none) {
    return result;
  }

  const auto point = text.find('.');
  const std::size_t digit_count = text.size() - (point == std::string::npos ? 0 : 1);
  const std::size_t limit =
      element.decimals == max_number_digits ? max_number_digits + 1 : max_number_digits;
  if (digit_count > limit) return error::bad_value_digits;

  auto decimals_left = static_cast<std::size_t>(element.decimals);
  if (point != std::string::npos) {
    decimals_left -= text.size() - point - 1;
    text.erase(point, 1);
  }
  if (!std::all_of(text.begin(), text.end(), platform::is_digit)) return error::value_not_numeric;
  text.append(decimals_left, '0');

  const std::size_t low_size = std::min(text.size(), static_cast<std::size_t>(half_digits));
  const std::string_view low_text = std::string_view(text).substr(text.size() - low_size);
  const std::string_view high_text = std::string_view(text).substr(0, text.size() - low_size);
  value.position =
      entered_point == std::string_view::npos ? 0 : static_cast<std::int32_t>(entered_point);
  value.low = static_cast<std::int32_t>(decimal_prefix(low_text));
  store_field(value.low_text, low_text);
  value.high = static_cast<std::int32_t>(decimal_prefix(high_text));
  store_field(value.high_text, value.high == 0 ? std::string_view() : high_text);
  return error::none;
}

ErrorCode parse_characters(const FmtItemRec& element, std::string_view text, FmtValRec& value) {
  const auto digits = static_cast<std::size_t>(element.digits);
  const bool is_national = element.kind == format_kind::national_character;
  if (is_national) {
    if (text.size() % 2 != 0) return error::attribute_format_mismatch;
    if (text.size() / 2 != digits) return error::value_length_mismatch;
    for (std::size_t i = 0; i < text.size(); i += 2) {
      if (!platform::is_legal_double_byte(text[i], text[i + 1])) {
        return error::attribute_format_mismatch;
      }
    }
  } else {
    if (text.size() != digits) return error::value_length_mismatch;
    const char base = element.kind == format_kind::upper_letters ? 'A' : 'a';
    for (const char letter : text) {
      if (letter < base || letter > base + ('Z' - 'A')) return error::attribute_format_mismatch;
    }
  }

  const std::size_t counted = is_national ? counted_full_width_bytes : counted_letters;
  const std::size_t position = text.size() > counted ? text.size() - counted : 0;
  const std::string_view low_text = text.substr(position);
  value.position = static_cast<std::int32_t>(position);
  store_field(value.low_text, low_text);
  value.low = is_national ? full_width_to_ordinal(low_text)
                          : letters_to_ordinal(
                                element.kind == format_kind::upper_letters ? 'A' : 'a', low_text);
  return error::none;
}

ErrorCode parse_value(const FmtItemRec& element, std::string_view text, FmtValRec& value) {
  switch (element.kind) {
    case format_kind::signed_number:
    case format_kind::unsigned_number:
    case format_kind::unsigned_number_in_text:
      return parse_number(element, text, value);
    case format_kind::upper_letters:
    case format_kind::lower_letters:
    case format_kind::national_character:
      return parse_characters(element, text, value);
    default:
      return parse_moment(element, text, value);
  }
}

}  // namespace korvex
