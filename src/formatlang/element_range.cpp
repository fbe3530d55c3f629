#include "formatlang/element_range.h"

#include <cstdio>
#include <string>

#include "formatlang/value_parser.h"
#include "values/error_codes.h"
#include "values/number_text.h"
#include "values/record_text.h"

namespace korvex {

namespace {

struct Span {
  std::int64_t low = 0;
  std::int64_t high = 0;
};

// The numbers that a span is taken of; a short date counts by year, month and day instead.
Span span_key(const FmtItemRec& element, const FmtValRec& value) {
  const bool is_date =
      element.kind == format_kind::date || element.kind == format_kind::date_unchecked;
  if (!is_date || element.digits != 6) return {value.low, value.high};
  const std::int64_t key =
      std::int64_t{value.year} * 100000 + std::int64_t{value.month} * 100 + value.day;
  return {key, key};
}

Span difference(Span a, Span b) { return {a.low - b.low, a.high - b.high}; }
Span sum(Span a, Span b) { return {a.low + b.low, a.high + b.high}; }

bool is_minus(Sign sign) { return sign == Sign::minus; }

// A signed number's way of counting. Directions that lead nowhere have none; their span stays 0.
NumberSubKind number_direction(Span start, Span end, bool start_minus, bool end_minus,
                               bool increment_minus, Span& span) {
  if (!start_minus && !end_minus) {
    span = increment_minus ? difference(start, end) : difference(end, start);
    return increment_minus ? number_sub_kind::plus_plus_down : number_sub_kind::plus_plus_up;
  }
  if (start_minus && end_minus) {
    span = increment_minus ? difference(end, start) : difference(start, end);
    return increment_minus ? number_sub_kind::minus_minus_down : number_sub_kind::minus_minus_up;
  }
  if (end_minus && increment_minus) {
    span = sum(start, end);
    return number_sub_kind::plus_minus_down;
  }
  if (start_minus && !increment_minus) {
    span = sum(start, end);
    return number_sub_kind::minus_plus_up;
  }
  return number_sub_kind::without_sign;
}

ErrorCode check_span(const FmtItemRec& element, Span span, const FmtValRec& increment) {
  if (element.kind == format_kind::national_character) return error::none;
  if ((span.low == 0 && span.high <= 0) || (span.low < 0 && span.high < 0)) {
    return error::inconsistent_values;
  }
  if (increment.high > span.high || (increment.high == span.high && increment.low > span.low)) {
    return error::increment_out_of_range;
  }
  return error::none;
}

// The value text as the element stores it: numbers at their full width, dates and times rewritten
// from their fields, everything else as entered.
std::string normalized_text(const FmtItemRec& element, const FmtValRec& value,
                            std::string_view entered) {
  const NumberShape shape = {element.width, element.digits, element.decimals};
  char text[64];
  switch (element.kind) {
    case format_kind::signed_number:
      return number_text(value.high, value.low, shape, is_minus(value.sign) ? '-' : '+');
    case format_kind::unsigned_number:
    case format_kind::unsigned_number_in_text:
      return number_text(value.high, value.low, shape, 0);
    case format_kind::date:
      std::snprintf(text, sizeof text, "%04d%02d%02d", value.year, value.month, value.day);
      return element.width == 6 ? text + 2 : text;
    case format_kind::time:
      std::snprintf(text, sizeof text, "%02d%02d%02d", value.hour, value.minute, value.second);
      return text;
    case format_kind::timestamp:
      std::snprintf(text, sizeof text, "%04d%02d%02d %02d%02d%02d", value.year, value.month,
                    value.day, value.hour, value.minute, value.second);
      return text;
    default:
      return std::string(entered);
  }
}

}  // namespace

SignedText split_sign(std::string_view text) {
  if (text.starts_with('-')) return {Sign::minus, text.substr(1)};
  if (text.starts_with('+')) return {Sign::plus, text.substr(1)};
  return {Sign::plus, text};
}

ErrorCode check_element(std::string_view start_entered, std::string_view end_entered,
                        std::string_view increment_entered, bool is_first, FmtItemRec& element,
                        FmtValRec& increment_value) {
  const SignedText start = split_sign(start_entered);
  const SignedText end = split_sign(end_entered);
  const SignedText increment = split_sign(increment_entered);
  const bool has_sign =
      start.digits.size() != start_entered.size() || end.digits.size() != end_entered.size();
  const bool is_unsigned = element.kind == format_kind::unsigned_number ||
                           element.kind == format_kind::unsigned_number_in_text;
  if (is_unsigned && has_sign) return error::sign_not_allowed;

  if (is_first) {
    element.start.sign = start.sign;
    element.end.sign = end.sign;
    increment_value.sign = increment.sign;
  }
  ErrorCode result = parse_value(element, start.digits, element.start);
  if (result != error::none) return result;
  result = parse_value(element, end.digits, element.end);
  if (result != error::none) return result;
  result = parse_number(element, increment.digits, increment_value);
  if (result != error::none) return result;

  const Span start_key = span_key(element, element.start);
  const Span end_key = span_key(element, element.end);
  Span span;
  if (element.kind == format_kind::signed_number) {
    element.sign = number_direction(start_key, end_key, is_minus(start.sign), is_minus(end.sign),
                                    is_minus(increment.sign), span);
  } else {
    span =
        is_minus(increment.sign) ? difference(start_key, end_key) : difference(end_key, start_key);
  }
  result = check_span(element, span, increment_value);
  if (result != error::none) return result;

  element.span_low = static_cast<std::int32_t>(span.low);
  element.span_high = static_cast<std::int32_t>(span.high);
  element.current = element.start;
  store_field(element.start_text, normalized_text(element, element.start, start.digits));
  store_field(element.end_text, normalized_text(element, element.end, end.digits));
  return error::none;
}

}  // namespace korvex
