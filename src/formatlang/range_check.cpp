#include "formatlang/range_check.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "formatlang/element_range.h"
#include "formatlang/format_parser.h"
#include "formatlang/format_text.h"
#include "formatlang/value_parser.h"
#include "platform/codepage.h"
#include "values/error_codes.h"
#include "values/number_text.h"
#include "values/record_text.h"

namespace korvex {

namespace {

using Values = std::vector<std::string_view>;

bool begins_with_sign(std::string_view text) {
  return text.starts_with('+') || text.starts_with('-');
}

// The rules for the list as a whole, with the codes of the start or of the end list.
struct ListErrors {
  ErrorCode not_set;
  ErrorCode count_mismatch;
  ErrorCode too_long;
  ErrorCode bad_sign;
};

constexpr ListErrors start_errors = {error::start_not_set, error::start_count_mismatch,
                                     error::start_out_of_range, error::bad_start_sign};
constexpr ListErrors end_errors = {error::end_not_set, error::end_count_mismatch,
                                   error::end_out_of_range, error::bad_end_sign};

ErrorCode check_list(const ItemAttributes& item, std::string_view list, std::int32_t variable_count,
                     const ListErrors& errors) {
  if (list.empty()) return errors.not_set;
  const Values values = cut_list(list);
  if (values.size() != static_cast<std::size_t>(variable_count)) return errors.count_mismatch;
  for (const std::string_view value : values) {
    if (value.size() > max_value_length) return errors.too_long;
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (begins_with_sign(values[i]) && (i > 0 || !is_on(item.signed_flag))) return errors.bad_sign;
  }
  return error::none;
}

ErrorCode check_increment(const ItemAttributes& item, const RangeTexts& texts) {
  const double magnitude = fraction_prefix(split_sign(texts.increment).digits);
  if (!(magnitude > 0 && magnitude <= max_increment)) return error::bad_increment;
  // A text of exactly the field's size would lose its terminator.
  if (texts.increment.size() >= increment_text_size) return error::increment_out_of_range;
  if (is_on(item.signed_flag) && texts.start.starts_with('+') && texts.end.starts_with('-') &&
      texts.increment.starts_with('+')) {
    return error::inconsistent_values;
  }
  return error::none;
}

// Full-width texts must run in the direction of the increment.
bool runs_forward(std::string_view start, std::string_view end, Sign increment_sign) {
  const int order = platform::compare_characters(start, end);
  return increment_sign == Sign::minus ? order > 0 : order < 0;
}

// Byte positions at which a list of full-width characters gets its commas: one after each
// character, counted with the commas already there.
constexpr std::size_t first_comma = 2;
constexpr std::size_t comma_distance = 3;

std::string with_commas(std::string list, std::size_t element_count) {
  std::size_t position = first_comma;
  for (std::size_t i = 1; i < element_count && position <= list.size(); ++i) {
    list.insert(position, 1, ',');
    position += comma_distance;
  }
  return list;
}

// One value of a character item: the text with a comma after every full-width character, and those
// characters by themselves.
struct SplitValue {
  std::string text;
  std::string full_width;
};

SplitValue split_value(std::string_view value) {
  SplitValue split;
  for (std::size_t i = 0; i < value.size();) {
    const bool is_double =
        i + 1 < value.size() && platform::is_legal_double_byte(value[i], value[i + 1]);
    const std::string_view character = value.substr(i, is_double ? 2 : 1);
    split.text.append(character);
    if (is_double) {
      split.text += ',';
      split.full_width.append(character);
    }
    i += character.size();
  }
  return split;
}

// Walks the start and end values side by side; with NationalCount::split the lists are rewritten so
// that each full-width character becomes a value of its own.
ErrorCode order_character_values(RangeTexts& texts, Sign increment_sign, NationalCount national) {
  const Values starts = cut_list(texts.start);
  const Values ends = cut_list(texts.end);
  std::string new_start;
  std::string new_end;
  for (std::size_t i = 0; i < starts.size(); ++i) {
    const SplitValue start = split_value(starts[i]);
    const SplitValue end = split_value(ends[i]);
    const bool has_full_width = !start.full_width.empty() || !end.full_width.empty();
    if (has_full_width && !runs_forward(start.full_width, end.full_width, increment_sign)) {
      return error::inconsistent_values;
    }
    new_start.append(start.text).append(",");
    new_end.append(end.text).append(",");
  }
  if (national == NationalCount::split) {
    texts.start = new_start;
    texts.end = new_end;
  }
  return error::none;
}

// Whether the later element has the wider span.
bool is_wider(const FmtItemRec& later, const FmtItemRec& widest) {
  return (later.span_low > widest.span_low && later.span_high >= widest.span_high) ||
         (later.span_low == widest.span_low && later.span_high > widest.span_high);
}

ErrorCode check_elements(ValueClass item_class, const RangeTexts& texts, CheckedRange& range) {
  const Values starts = cut_list(texts.start);
  const Values ends = cut_list(texts.end);
  const FmtItemRec* widest = nullptr;
  std::size_t index = 0;
  for (FmtItemRec& element : range.elements) {
    if (element.kind == format_kind::fixed) continue;
    if (index >= starts.size() || index >= ends.size()) return error::value_length_mismatch;
    const ErrorCode result = check_element(starts[index], ends[index], texts.increment,
                                           widest == nullptr, element, range.increment);
    if (result != error::none) return result;
    if (widest == nullptr || is_wider(element, *widest)) widest = &element;
    ++index;
  }
  if (index != starts.size() || index != ends.size()) return error::value_length_mismatch;
  range.lead_element = widest->sequence;
  if (item_class == ValueClass::national && range.increment.low > widest->span_low) {
    return error::inconsistent_values;
  }
  return error::none;
}

ErrorCode check_once(const ItemAttributes& item, ValueClass item_class, const RangeTexts& entered,
                     NationalCount national, CheckedRange& range) {
  Result<ParsedFormat> parsed = parse_format(item, item_class, entered.format, national);
  if (!parsed) return parsed.code();
  range.elements = std::move(parsed->elements);
  range.variable_count = parsed->variable_count;
  // Without a part that varies, the last one.
  range.lead_element = static_cast<ElementNumber>(range.elements.size());
  if (parsed->variable_count == 0) return error::none;

  ErrorCode result = check_list(item, entered.start, parsed->variable_count, start_errors);
  if (result != error::none) return result;
  result = check_list(item, entered.end, parsed->variable_count, end_errors);
  if (result != error::none) return result;
  result = check_increment(item, entered);
  if (result != error::none) return result;

  RangeTexts texts = entered;
  const Sign increment_sign = split_sign(entered.increment).sign;
  if (item_class == ValueClass::national) {
    if (!runs_forward(texts.start, texts.end, increment_sign)) return error::inconsistent_values;
    texts.start =
        with_commas(std::move(texts.start),
                    range.elements.size() - static_cast<std::size_t>(parsed->fixed_count));
    texts.end = with_commas(std::move(texts.end),
                            range.elements.size() - static_cast<std::size_t>(parsed->fixed_count));
  } else if (item_class == ValueClass::character) {
    result = order_character_values(texts, increment_sign, national);
    if (result != error::none) return result;
  }
  return check_elements(item_class, texts, range);
}

}  // namespace

Result<CheckedRange> check_range(const ItemAttributes& entered, const RangeTexts& texts,
                                 const FmtValRec& previous_increment) {
  const ValueClass item_class = value_class_of(entered.attribute);
  if (item_class == ValueClass::none) return error::bad_attribute;
  ItemAttributes item = entered;
  item.digits = effective_digits(entered);
  CheckedRange range;
  range.increment = previous_increment;
  range.digits = item.digits;

  // A full-width directive with a count is first checked whole, against its value as entered.
  if (item_class == ValueClass::character) {
    CheckedRange scratch = range;
    const ErrorCode result = check_once(item, item_class, texts, NationalCount::keep, scratch);
    if (result != error::none) return result;
  }
  const ErrorCode result = check_once(item, item_class, texts, NationalCount::split, range);
  if (result != error::none) return result;
  return range;
}

}  // namespace korvex
