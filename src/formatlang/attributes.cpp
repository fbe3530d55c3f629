#include "formatlang/attributes.h"

namespace korvex {

bool is_quoted_character(std::int32_t code) { return code >= 1 && code <= 3; }

bool is_character(std::int32_t code) { return is_quoted_character(code) || code == 6 || code == 7; }

bool is_national(std::int32_t code) { return code == 11 || code == 12; }

std::int32_t value_class_of(std::int32_t code) {
  if (is_character(code)) return value_class::character;
  if (is_national(code)) return value_class::national;
  if (code >= 4 && code <= 27) return value_class::numeric;
  switch (code) {
    case attribute::date:
      return value_class::date;
    case attribute::time:
      return value_class::time;
    case attribute::timestamp:
      return value_class::timestamp;
    default:
      return value_class::none;
  }
}

bool is_quoted(std::int32_t code) {
  return is_quoted_character(code) || is_national(code) || code == attribute::date ||
         code == attribute::time || code == attribute::timestamp;
}

std::int32_t effective_digits(const ItemAttributes& item) {
  return is_character(item.attribute) && item.digits == 0 ? item.length : item.digits;
}

}  // namespace korvex
