#include "formatlang/default_settings.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "formatlang/format_parser.h"
#include "formatlang/value_parser.h"
#include "values/records.h"

namespace korvex {

namespace {

constexpr std::int32_t max_national_characters = 64;
// More characters than any format may have; keeps a hostile digit count from filling memory.
constexpr std::int32_t max_repetitions = 256;

constexpr const char* first_hiragana = "\x82\xA0";
constexpr const char* last_hiragana = "\x82\xF1";

std::string repeated(std::string_view text, std::int32_t count) {
  std::string out;
  for (std::int32_t i = 0; i < std::min(count, max_repetitions); ++i) out.append(text);
  return out;
}

RangeTexts letters(std::int32_t count) {
  const std::int32_t n = std::min(count, max_letters);
  return {"%" + std::to_string(n) + "S", repeated("A", n), repeated("Z", n), "1"};
}

RangeTexts national_characters(std::int32_t count) {
  const std::int32_t n = std::min(count, max_national_characters);
  return {"%" + std::to_string(n) + "N", repeated(first_hiragana, n), repeated(last_hiragana, n),
          "1"};
}

RangeTexts number(bool is_signed, std::int32_t integer_digits, std::int32_t decimals) {
  const std::string letter = is_signed ? "D" : "U";
  const std::string size = "%" + std::to_string(integer_digits);
  const std::string nines = repeated("9", integer_digits);
  if (decimals == 0) return {size + letter, "1", nines, "1"};
  const std::string smallest = "0." + repeated("0", decimals - 1) + "1";
  return {size + "." + std::to_string(decimals) + letter, smallest,
          (integer_digits == 0 ? "0" : nines) + "." + repeated("9", decimals), smallest};
}

RangeTexts short_number(bool is_signed, std::int32_t digits, std::int32_t decimals) {
  const std::int32_t d = std::min(decimals, max_number_digits);
  const std::int32_t i = std::min(digits - decimals, max_number_digits - d);
  return number(is_signed, i, d);
}

bool has_impossible_digits(const ItemAttributes& item) {
  return item.digits < 0 || item.decimals < 0 || item.decimals > item.digits;
}

}  // namespace

std::optional<RangeTexts> default_settings(const ItemAttributes& item) {
  const AttributeTraits& traits = traits_of(item.attribute);
  const bool is_signed = is_on(item.signed_flag);
  if (traits.checks_digits && has_impossible_digits(item)) return std::nullopt;
  if (item.attribute == attribute::integer) {
    return RangeTexts{"%10D", "1", "2147483647", "1"};
  }
  if (item.attribute == attribute::small_integer) {
    return RangeTexts{"%5D", "1", "32767", "1"};
  }
  switch (traits.kind) {
    case DataKind::character: {
      const std::int32_t count = effective_digits(item);
      if (count < 0) return std::nullopt;
      return letters(count);
    }
    case DataKind::national:
      return national_characters(item.digits);
    case DataKind::decimal:
      return number(is_signed, item.digits - item.decimals, item.decimals);
    case DataKind::number_or_text:
      return item.digits == 0 ? letters(std::max(item.length, 0))
                              : short_number(is_signed, item.digits, item.decimals);
    case DataKind::date:
      return RangeTexts{"%4YMD", "19700101", "20380119", "1"};
    case DataKind::time:
      return RangeTexts{"%T", "000000", "235959", "1"};
    case DataKind::timestamp:
      return RangeTexts{"%TS", "19700101 090000", "20380119 031407", "1"};
    case DataKind::bare_number:
    case DataKind::none:
      break;
  }
  return std::nullopt;
}

namespace {

constexpr std::string_view full_width_capital_z = "\x82\x79";

// One position more than any value may have: a longer text is refused just the same.
constexpr std::int64_t most_positions = max_value_length + 1;

std::string repeated(std::string_view text, std::int64_t count) {
  std::string out;
  for (std::int64_t i = 0; i < std::min(count, most_positions); ++i) out.append(text);
  return out;
}

}  // namespace

std::string largest_value_text(const ItemAttributes& item) {
  const std::int64_t positions = std::int64_t{item.digits} - item.decimals;
  switch (traits_of(item.attribute).largest) {
    case LargestValue::none:
      return {};
    case LargestValue::small_letters:
      return repeated("z", positions);
    case LargestValue::full_width_letters:
      return repeated(full_width_capital_z, positions);
    case LargestValue::digits:
      return repeated("9", positions);
    case LargestValue::number:
      break;
  }
  std::string text = is_on(item.signed_flag) ? "+" : "";
  text += repeated("9", positions);
  if (item.decimals > 0) text += "." + repeated("9", item.decimals);
  return text;
}

}  // namespace korvex
