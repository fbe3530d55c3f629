#include "dialogs/rules/initial_settings.h"

#include <algorithm>
#include <limits>

#include "control/item_settings.h"
#include "formatlang/format_parser.h"
#include "values/records.h"

namespace korvex {

namespace {

void give_default_ranges(ClColMain& main) {
  for (std::size_t index = 0; main.select_item(index) != nullptr; ++index) {
    if (!main.build_default_settings()) continue;
    constexpr bool initializes = false;
    constexpr bool is_custom = true;
    store_format(main, main.default_texts, initializes, is_custom);
  }
}

ErrorCode give_null(ClColMain& main) {
  for (std::size_t index = 0; main.select_item(index) != nullptr; ++index) {
    if (!is_on(main.current_item()->null_allowed)) continue;
    if (const ErrorCode result = set_initial_value(main); result != error::none) return result;
  }
  return error::none;
}

}  // namespace

ErrorCode give_initial_settings(ClColMain& main) {
  if (!main.settings.is_held()) {
    give_default_ranges(main);
    return error::none;
  }
  const bool is_record_file = main.layout_kind() == layout_kind::record_file;
  if (is_record_file || !main.is_null_default()) return error::none;
  return give_null(main);
}

namespace {

constexpr std::int32_t max_national_characters = 64;
constexpr std::int32_t no_limit = std::numeric_limits<std::int32_t>::max();

// Empty when a hostile item has a negative count.
std::string text_format(std::int32_t count, std::int32_t limit, const char* letter) {
  return count < 0 ? "" : "%" + std::to_string(std::min(count, limit)) + letter;
}

std::string number_format(const ItemAttributes& item) {
  if (item.digits < 0 || item.decimals < 0 || item.decimals > item.digits) return "";
  const std::string letter = is_on(item.signed_flag) ? "D" : "U";
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
