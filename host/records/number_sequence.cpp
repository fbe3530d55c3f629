#include "host/records/number_sequence.h"

#include <algorithm>
#include <numeric>

#include "format/record_text.h"
#include "formatlang/number_text.h"

namespace korvex::host {

namespace {

constexpr std::uint64_t magnitude_limit = 1'000'000'000'000'000'000;  // behind 18 digits

enum class Course { grow, shrink, through_zero };

struct Counting {
  Course course = Course::grow;
  bool is_signed = false;
  bool starts_minus = false;
};

std::optional<Counting> counting_of(const SequenceContext& context, const FmtItemRec& settings) {
  const bool up = context.increment.sign == sign_plus;
  const bool starts_minus = settings.start.sign == sign_minus;
  if (settings.kind == format_kind::unsigned_number ||
      settings.kind == format_kind::unsigned_number_in_text) {
    return Counting{up ? Course::grow : Course::shrink, false, false};
  }
  const bool is_simple = settings.kind == format_kind::signed_number_simple;
  if (is_simple && settings.sign != number_sub_kind::plus_plus_up &&
      settings.sign != number_sub_kind::plus_plus_down) {
    return std::nullopt;
  }
  switch (settings.sign) {
    case number_sub_kind::plus_plus_up:
      return Counting{Course::grow, true, false};
    case number_sub_kind::plus_plus_down:
      return Counting{Course::shrink, true, false};
    case number_sub_kind::minus_minus_down:
      return Counting{Course::grow, true, true};
    case number_sub_kind::minus_minus_up:
      return Counting{Course::shrink, true, true};
    case number_sub_kind::plus_minus_down:
    case number_sub_kind::minus_plus_up: {
      const bool from_minus = settings.sign == number_sub_kind::minus_plus_up;
      if (from_minus != starts_minus) break;
      return Counting{Course::through_zero, true, starts_minus};
    }
    default:
      break;
  }
  return std::nullopt;
}

std::optional<std::uint64_t> magnitude(const FmtValRec& value) {
  if (value.high < 0 || value.high >= half_base || value.low < 0 || value.low >= half_base) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(value.high * half_base + value.low);
}

std::uint64_t power_of_ten(int exponent) {
  return exponent == 0 ? 1 : 10 * power_of_ten(exponent - 1);
}

// The element as a point and digits between sign and end.
bool has_usual_shape(const FmtItemRec& settings, bool is_signed) {
  const int digits = settings.digits;
  const int decimals = settings.decimals;
  if (digits < 0 || decimals < 0 || digits + decimals < 1 ||
      digits + decimals > max_number_digits) {
    return false;
  }
  const int point = decimals == 0 ? 0 : digits == 0 ? 2 : 1;
  return settings.width == digits + decimals + point + (is_signed ? 1 : 0);
}

// Whether the step down from a magnitude smaller than the step is noticed as one: with halves that
// borrow from each other only the low one tells.
bool underflow_cuts(std::uint64_t last, std::uint64_t step) {
  constexpr auto base = static_cast<std::uint64_t>(half_base);
  return last < step && last % base < step % base;
}

// The digits that are written are the last ones: they come back after so many steps.
std::uint64_t visible_period(std::uint64_t modulus, std::uint64_t step) {
  return modulus / std::gcd(modulus, step);
}

// How many texts of `count` steps on the starting side of zero and behind it are different.
void count_texts(std::uint64_t count, std::uint64_t before_zero, std::uint64_t period,
                 ElementSequence& sequence) {
  const std::uint64_t first = std::min(count, before_zero);
  const std::uint64_t second = count - first;
  sequence.distinct = std::min(first, period) + std::min(second, period);
  sequence.different = first > period ? period : first + std::min(second, period);
}

}  // namespace

std::optional<ElementSequence> number_sequence(const SequenceContext& context,
                                               const FmtItemRec& settings, bool is_lead) {
  const auto counting = counting_of(context, settings);
  const auto start = magnitude(settings.start);
  const auto end = magnitude(settings.end);
  const auto step = magnitude(context.increment);
  if (!counting || !start || !end || !step || *step == 0) return std::nullopt;
  if (!has_usual_shape(settings, counting->is_signed)) return std::nullopt;
  const NumberShape shape = {settings.width, settings.digits, settings.decimals};
  const char sign = !counting->is_signed ? '\0' : counting->starts_minus ? '-' : '+';
  const std::string_view first_text = field_text(settings.start_text);
  if (number_text(settings.start.high, settings.start.low, shape, sign) != first_text) {
    return std::nullopt;
  }
  // The step of one that is no lead may only be small: then it always ends in a cut.
  if (!is_lead && context.increment.high != 0) return std::nullopt;

  ElementSequence sequence;
  std::uint64_t values = 1;  // until the end value is passed
  std::uint64_t before_zero = endless;
  switch (counting->course) {
    case Course::grow:
      if (*end >= *start) values = (*end - *start) / *step + 1;
      sequence.end = is_lead ? values : (magnitude_limit - 1 - *start) / *step + 1;
      sequence.cuts = *start + sequence.end * *step >= magnitude_limit;
      break;
    case Course::shrink:
      if (*start >= *end) values = (*start - *end) / *step + 1;
      sequence.end = is_lead ? values : *start / *step + 1;
      sequence.cuts = underflow_cuts(*start - (sequence.end - 1) * *step, *step);
      break;
    case Course::through_zero:
      values = (*start + *end) / *step + 1;
      sequence.end = is_lead ? values : (magnitude_limit - 1 + *start) / *step + 1;
      sequence.cuts = sequence.end * *step - *start >= magnitude_limit;
      // Zero itself is plus, but for a start value of minus zero.
      before_zero = !counting->starts_minus
                        ? *start / *step + 1
                        : std::max<std::uint64_t>((*start + *step - 1) / *step, 1);
      break;
  }
  if (!is_lead) sequence.past_end = values;

  const bool shows_fraction_only = context.layout_kind != layout_kind::record_file &&
                                   context.item_digits == context.item_decimals &&
                                   settings.decimals > 0;
  const int visible_digits = settings.decimals + (shows_fraction_only ? 0 : settings.digits);
  const std::uint64_t period = visible_period(power_of_ten(visible_digits), *step);
  count_texts(sequence.end, before_zero, period, sequence);
  if (!is_lead && counting->course != Course::through_zero) sequence.period = period;
  sequence.size = shows_fraction_only
                      ? static_cast<std::size_t>(1 + settings.decimals) + (sign != 0 ? 1 : 0)
                      : first_text.size();
  return sequence;
}

}  // namespace korvex::host
