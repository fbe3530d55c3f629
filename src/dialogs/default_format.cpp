#include "dialogs/default_format.h"

#include <algorithm>
#include <limits>

#include "format/records.h"

namespace korvex {

namespace {

constexpr std::int32_t max_letters = 5;
constexpr std::int32_t max_national_characters = 64;
constexpr std::int32_t no_limit = std::numeric_limits<std::int32_t>::max();

// Empty when a hostile item has a negative count.
std::string text_format(std::int32_t count, std::int32_t limit, const char* letter) {
  return count < 0 ? "" : "%" + std::to_string(std::min(count, limit)) + letter;
}

std::string number_format(const ItemAttributes& item) {
  if (item.digits < 0 || item.decimals < 0 || item.decimals > item.digits) return "";
  const std::string letter = item.signed_flag != 0 ? "D" : "U";
  if (item.decimals == 0) {
    return "%" + std::to_string(std::min(item.digits, max_number_digits)) + letter;
  }
  const std::int32_t decimals = std::min(item.decimals, max_number_digits);
  const std::int32_t integers = std::min(item.digits - item.decimals, max_number_digits - decimals);
  return "%" + std::to_string(integers) + "." + std::to_string(decimals) + letter;
}

bool is_plain_decimal(std::int32_t code) {
  return code == 4 || code == 5 || (code >= 13 && code <= 18);
}

// Numbers that are text where the host gives them no digits.
bool is_number_or_text(std::int32_t code) {
  return (code >= 19 && code <= 27) || code == 29 || code == 30;
}

}  // namespace

std::string default_format(const ItemAttributes& item) {
  const std::int32_t code = item.attribute;
  const std::int32_t characters = item.digits != 0 ? item.digits : item.length;
  if (is_character(code)) return text_format(characters, max_letters, "S");
  if (is_national(code)) return text_format(characters, max_national_characters, "N");
  if (is_number_or_text(code) && item.digits == 0) return text_format(item.length, no_limit, "S");
  if (is_plain_decimal(code) || is_number_or_text(code)) return number_format(item);
  switch (code) {
    case attribute::date:
      return "%4YMD";
    case attribute::time:
      return "%T";
    case attribute::timestamp:
      return "%TS";
    default:
      return "";
  }
}

}  // namespace korvex
