#include "dialogs/rules/default_format.h"

#include <algorithm>
#include <limits>

#include "values/records.h"

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

}  // namespace

std::string default_format(const ItemAttributes& item) {
  const std::int32_t characters = item.digits != 0 ? item.digits : item.length;
  switch (traits_of(item.attribute).kind) {
    case DataKind::character:
      return text_format(characters, max_letters, "S");
    case DataKind::national:
      return text_format(characters, max_national_characters, "N");
    case DataKind::number_or_text:
      return item.digits == 0 ? text_format(item.length, no_limit, "S") : number_format(item);
    case DataKind::decimal:
      return number_format(item);
    case DataKind::date:
      return "%4YMD";
    case DataKind::time:
      return "%T";
    case DataKind::timestamp:
      return "%TS";
    case DataKind::bare_number:
    case DataKind::none:
      break;
  }
  return "";
}

}  // namespace korvex
