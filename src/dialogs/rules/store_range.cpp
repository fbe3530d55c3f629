#include "dialogs/rules/store_range.h"

#include <limits>

#include "control/item_settings.h"
#include "dialogs/rules/format_precheck.h"
#include "dialogs/rules/setup_fields.h"
#include "formatlang/range_check.h"
#include "values/error_codes.h"
#include "values/number_text.h"

namespace korvex {

namespace {

// How many parts of a kind a format may have.
struct PartLimits {
  std::int32_t fixed;
  std::int32_t variable;
};

constexpr std::int32_t any_number = std::numeric_limits<std::int32_t>::max();
constexpr PartLimits text_limits = {3, any_number};
constexpr PartLimits number_limits = {1, 1};
constexpr PartLimits moment_limits = {0, 1};
constexpr PartLimits no_limits = {any_number, any_number};

PartLimits part_limits(const ItemAttributes& item, const RangeRules& rules) {
  const bool may_be_decimal_text =
      item.attribute == attribute::decimal && rules.decimal_without_digits_is_text;
  switch (traits_of(item.attribute).limit) {
    case FormatLimit::none:
      return no_limits;
    case FormatLimit::text:
      return text_limits;
    case FormatLimit::number:
      return may_be_decimal_text && item.digits == 0 ? text_limits : number_limits;
    case FormatLimit::number_or_text:
      return item.digits == 0 ? text_limits : number_limits;
    case FormatLimit::moment:
      break;
  }
  return moment_limits;
}

ErrorCode check_parts(const FormatParts& parts, const PartLimits& limits) {
  if (parts.fixed > limits.fixed) return error::too_many_fixed_parts;
  return parts.variable > limits.variable ? error::too_many_variable_parts : error::none;
}

ErrorCode check_values_given(const RangeTexts& texts) {
  if (texts.start.empty()) return error::start_not_set;
  if (texts.end.empty()) return error::end_not_set;
  return texts.increment.empty() ? error::increment_not_set : error::none;
}

ErrorCode check_entry(const ItemAttributes& item, const RangeTexts& texts,
                      const RangeRules& rules) {
  if (texts.format.empty()) return error::format_not_set;
  if (texts.format.size() >= format_size_limit) return error::format_too_long;
  const Result<FormatParts> parts = precheck_format(texts.format);
  if (!parts) return parts.code();
  const ErrorCode result = check_parts(*parts, part_limits(item, rules));
  if (result != error::none || parts->variable == 0) return result;
  return check_values_given(texts);
}

// Leading zeros count as digits.
bool fits_integer(std::string_view text) {
  std::string_view largest = "2147483647";
  if (text.starts_with('-')) largest = "2147483648";
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  return text.size() < largest.size() || (text.size() == largest.size() && text <= largest);
}

bool fits_small_integer(std::string_view text) {
  const std::int64_t number = decimal_prefix(text);
  return number >= std::numeric_limits<std::int16_t>::min() &&
         number <= std::numeric_limits<std::int16_t>::max();
}

ErrorCode check_integer_range(Attribute attribute, const RangeTexts& texts) {
  if (attribute != attribute::integer && attribute != attribute::small_integer) return error::none;
  const auto fits = attribute == attribute::integer ? fits_integer : fits_small_integer;
  if (!fits(texts.start)) return error::start_out_of_range;
  return fits(texts.end) ? error::none : error::end_out_of_range;
}

// Whether an entry with these values instead, and the smallest usual increment, ends in the code.
bool brings_code(const ItemAttributes& item, const std::string& format, const std::string& start,
                 const std::string& end, ErrorCode code) {
  return check_range(item, {format, start, end, first_increment}).code() == code;
}

// Many codes speak of the format, the start or the end value. To blame is the format when it brings
// the code without any value, and a value when it does so in the places of both.
RangePart part_to_blame(const ItemAttributes& item, const RangeTexts& texts,
                        const RangeRules& rules, ErrorCode code) {
  const auto is_brought_by = [&](const std::string& start, const std::string& end) {
    return brings_code(item, texts.format, start, end, code);
  };
  if (check_entry(item, texts, rules) == code || is_brought_by("", "")) return RangePart::format;
  if (is_brought_by(texts.start, texts.start)) return RangePart::start;
  return is_brought_by(texts.end, texts.end) ? RangePart::end : RangePart::increment;
}

RangePart wrong_part(const ItemAttributes& item, const RangeTexts& texts, const RangeRules& rules,
                     ErrorCode code) {
  switch (code) {
    case error::start_not_set:
    case error::start_count_mismatch:
    case error::bad_start_sign:
    case error::start_out_of_range:
      return RangePart::start;
    case error::end_not_set:
    case error::end_count_mismatch:
    case error::bad_end_sign:
    case error::end_out_of_range:
    case error::inconsistent_values:  // with the start value, which was typed before
      return RangePart::end;
    case error::increment_not_set:
    case error::bad_increment:
      return RangePart::increment;
    case error::increment_out_of_range:  // for an end value that is too near, or before the start
      return brings_code(item, texts.format, texts.start, texts.end, code) ? RangePart::end
                                                                           : RangePart::increment;
    default:
      return part_to_blame(item, texts, rules, code);
  }
}

}  // namespace

RangeStored store_range(ClColMain& main, const RangeEntry& entry, const RangeRules& rules) {
  const ItemAttributes item = main.current_item()->attributes();
  RangeStored stored;
  stored.code = check_entry(item, entry.texts, rules);
  if (stored.code == error::none) {
    stored.code = store_format(main, entry.texts, entry.initializes, entry.is_custom);
    if (stored.code == error::none && rules.checks_integer_range) {
      stored.code = check_integer_range(item.attribute, entry.texts);
    }
    stored.clears_values = stored.code == error::none && main.settings.edited().variable_count == 0;
  }
  if (stored.code != error::none) stored.wrong = wrong_part(item, entry.texts, rules, stored.code);
  stored.hint = range_hint(stored.code);
  return stored;
}

std::string_view range_hint(ErrorCode code) {
  switch (code) {
    case error::zero_or_not_numeric:
      return "\nPlease check the start value and the end value.";
    case error::bad_decimal_point:
    case error::decimals_prohibited:
      return "\nPlease check the start value, the end value, and the increment value.";
    case error::decimals_in_character_item:
    case error::bad_attribute_characters:
    case error::bad_attribute:
      return "\nPlease check the format.";
    case error::attribute_format_mismatch:
      return "\nPlease check the format, the start value, and the end value.";
    default:
      return "";
  }
}

}  // namespace korvex
