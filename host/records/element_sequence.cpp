#include "host/records/element_sequence.h"

#include <algorithm>
#include <numeric>

#include "format/record_text.h"
#include "formatlang/full_width_table.h"
#include "formatlang/ordinals.h"
#include "host/records/moment_sequence.h"
#include "host/records/number_sequence.h"

namespace korvex::host {

namespace {

constexpr std::int64_t letter_count = 26;
constexpr std::size_t full_width_size = 2;

ElementSequence fixed_sequence(std::string_view text) {
  ElementSequence sequence;
  sequence.period = sequence.different = sequence.distinct = 1;
  sequence.size = text.size();
  return sequence;
}

std::int64_t highest_ordinal(const FmtItemRec& settings, std::size_t size) {
  if (settings.kind == format_kind::national_character) return full_width_count - 1;
  std::int64_t count = 1;
  for (std::size_t i = 0; i < size; ++i) count *= letter_count;
  return count - 1;
}

std::int32_t ordinal_of(const FmtItemRec& settings, std::string_view text) {
  if (settings.kind == format_kind::national_character) return full_width_to_ordinal(text);
  return letters_to_ordinal(settings.kind == format_kind::upper_letters ? 'A' : 'a', text);
}

// The full-width table holds a character twice, so two of its places give one text.
void take_out_double(std::int64_t start, std::int64_t change, ElementSequence& sequence) {
  for (std::int32_t place = 0; place < full_width_count; ++place) {
    const std::int32_t first = full_width_index(full_width_code(place));
    if (first == place) continue;
    const auto step_of = [&](std::int64_t ordinal) {
      const std::int64_t distance = ordinal - start;
      const bool is_met = distance % change == 0 && distance / change >= 0 &&
                          static_cast<std::uint64_t>(distance / change) < sequence.distinct;
      return is_met ? static_cast<std::uint64_t>(distance / change) : endless;
    };
    const std::uint64_t later = std::max(step_of(place), step_of(first));
    if (later == endless) continue;
    sequence.different = later;
    --sequence.distinct;
    return;
  }
}

std::optional<ElementSequence> character_sequence(const SequenceContext& context,
                                                  const FmtItemRec& settings,
                                                  std::string_view first_text, bool is_lead) {
  const bool is_full_width = settings.kind == format_kind::national_character;
  const std::int64_t start = settings.start.low;
  const std::int64_t end = settings.end.low;
  const std::int64_t step = context.increment.low;
  const bool counts_whole_text =
      settings.start.position == 0 && field_text(settings.start.low_text) == first_text;
  if (!counts_whole_text || step <= 0 || ordinal_of(settings, first_text) != start ||
      (is_full_width && first_text.size() != full_width_size) || end < 0 ||
      end > highest_ordinal(settings, first_text.size())) {
    return std::nullopt;
  }
  const bool up = context.increment.sign == sign_plus;
  const std::int64_t distance = up ? end - start : start - end;
  ElementSequence sequence;
  const auto values = distance < 0 ? 1 : static_cast<std::uint64_t>(distance / step) + 1;
  (is_lead ? sequence.end : sequence.period) = values;
  sequence.different = sequence.distinct = values;
  if (is_full_width && values > 1) take_out_double(start, up ? step : -step, sequence);
  sequence.size = first_text.size();
  return sequence;
}

bool same_value(const FmtValRec& left, const FmtValRec& right) {
  return left.sign == right.sign && left.position == right.position && left.low == right.low &&
         left.high == right.high && field_text(left.low_text) == field_text(right.low_text) &&
         left.year == right.year && left.month == right.month && left.day == right.day &&
         left.hour == right.hour && left.minute == right.minute && left.second == right.second;
}

}  // namespace

std::uint64_t product(std::uint64_t left, std::uint64_t right) {
  std::uint64_t result = 0;
  return __builtin_mul_overflow(left, right, &result) ? endless : result;
}

std::uint64_t common_multiple(std::uint64_t left, std::uint64_t right) {
  if (left == endless || right == endless) return endless;
  return product(left / std::gcd(left, right), right);
}

std::optional<ElementSequence> element_sequence(const SequenceContext& context,
                                                const ClFmtItemInf& element) {
  const FmtItemRec& settings = element.record;
  const std::string first_text = element.first_text();
  if (first_text.empty()) return std::nullopt;
  if (settings.kind == format_kind::fixed) return fixed_sequence(first_text);
  const std::int32_t direction = context.increment.sign;
  if ((direction != sign_plus && direction != sign_minus) ||
      !same_value(settings.current, settings.start) ||
      field_text(settings.start_text) != first_text) {
    return std::nullopt;
  }
  const bool is_lead = settings.sequence == context.lead_element;
  switch (settings.kind) {
    case format_kind::signed_number:
    case format_kind::signed_number_simple:
    case format_kind::unsigned_number:
    case format_kind::unsigned_number_in_text:
      return number_sequence(context, settings, is_lead);
    case format_kind::upper_letters:
    case format_kind::lower_letters:
    case format_kind::national_character:
      return character_sequence(context, settings, first_text, is_lead);
    case format_kind::date:
    case format_kind::date_unchecked:
    case format_kind::time:
    case format_kind::timestamp:
      return moment_sequence(context, settings, is_lead);
    default:
      return std::nullopt;
  }
}

}  // namespace korvex::host
