#include "host/records/moment_sequence.h"

#include <algorithm>
#include <numeric>

#include "format/record_text.h"
#include "courses/calendar.h"
#include "courses/moment_text.h"

namespace korvex::host {

namespace {

// The largest step that the checks let through; larger ones carry in ways of their own.
constexpr std::int64_t largest_step = 9;

constexpr MomentFields first_moment = {1970, 1, 1, 9, 0, 0};
constexpr MomentFields last_moment = {2038, 1, 19, 3, 14, 7};

constexpr std::int64_t months_in_year = 12;
constexpr std::int64_t longest_month = 31;
constexpr std::int64_t days_in_unchecked_year = months_in_year * longest_month;

std::uint64_t steps(std::int64_t distance, std::int64_t step) {
  return distance < 0 ? 1 : static_cast<std::uint64_t>(distance / step) + 1;
}

// One moment element with its numbers at hand.
struct Moment {
  const FmtItemRec& settings;
  const MomentLayout& layout;
  bool is_lead = false;
  bool up = false;
  std::int64_t step = 0;
  MomentFields start = {};
  MomentFields end = {};
  std::int64_t start_key = 0;
  std::int64_t end_key = 0;
};

// Values on a line between the ends of the calendar.
ElementSequence on_calendar(const Moment& moment, std::int64_t start, std::uint64_t values,
                            std::int64_t first, std::int64_t last) {
  ElementSequence sequence;
  const std::uint64_t until_overflow = steps(moment.up ? last - start : start - first, moment.step);
  if (moment.is_lead) {
    sequence.end = std::min(values, until_overflow);
    sequence.cuts = values >= until_overflow;
    sequence.different = sequence.distinct = sequence.end;
  } else {
    sequence.overflow = sequence.period = until_overflow;
    sequence.different = sequence.distinct = until_overflow;
    sequence.past_end = values;
  }
  return sequence;
}

bool is_on_calendar(const MomentFields& fields) {
  MomentFields same = fields;
  return set_date(day_number(fields), same) && same.year == fields.year &&
         same.month == fields.month && same.day == fields.day;
}

std::optional<ElementSequence> date_sequence(const Moment& moment) {
  if (!is_on_calendar(moment.start) || !is_on_calendar(moment.end)) return std::nullopt;
  const std::int64_t start = day_number(moment.start);
  const std::int64_t end = day_number(moment.end);
  const std::int64_t last = day_number(last_moment);
  const std::uint64_t values = steps(moment.up ? end - start : start - end, moment.step);
  ElementSequence sequence = on_calendar(moment, start, values, 0, last);
  if (moment.is_lead || !moment.up) return sequence;
  // Behind the calendar's last day the texts decide: a two-digit end year of the last century is
  // greater than any text of 2038, and the date stays where it is.
  const std::int64_t last_value =
      start + static_cast<std::int64_t>(sequence.period - 1) * moment.step;
  MomentFields next = last_moment;
  set_date(last_value, next);
  next.day += static_cast<int>(moment.step);
  if (moment.layout.plain_text(next) <= field_text(moment.settings.end_text)) {
    sequence.overflow = sequence.period = endless;
  }
  return sequence;
}

std::optional<ElementSequence> timestamp_sequence(const Moment& moment) {
  const std::int64_t start = second_number(moment.start);
  std::int64_t end = second_number(moment.end);
  // A day that its month lacks lies between the month and the next.
  if (!is_on_calendar(moment.end)) {
    MomentFields next_month = {moment.end.year, moment.end.month + 1, 1, 0, 0, 0};
    end = second_number(next_month) - (moment.up ? 1 : 0);
  }
  std::uint64_t values = steps(moment.up ? end - start : start - end, moment.step);
  if (!moment.up && !is_on_calendar(moment.start)) {
    // Counted as a day of the next month, it may step down to a moment that still reads later.
    MomentFields next = moment.start;
    if (set_moment(start - moment.step, next) && moment.layout.order_key(next) > moment.start_key) {
      values = 1;
    }
  }
  return on_calendar(moment, start, values, second_number(first_moment),
                     second_number(last_moment));
}

// Values on a circle of `size` places, `allowed` of which, from the start on, do not pass the end.
// A step may jump over the rest, and the end is missed then.
ElementSequence on_circle(const Moment& moment, std::int64_t size, std::int64_t allowed) {
  ElementSequence sequence;
  std::uint64_t values = 0;
  bool is_missed = false;
  for (std::int64_t place = 0; place < allowed;) {
    const std::int64_t met = (allowed - place + moment.step - 1) / moment.step;
    values += static_cast<std::uint64_t>(met);
    place += met * moment.step;
    if (place < size) break;
    place -= size;
    is_missed = place == 0;
    if (is_missed) break;
  }
  if (moment.is_lead) {
    (is_missed ? sequence.period : sequence.end) = values;
    sequence.different = sequence.distinct = values;
  } else {
    sequence.period = static_cast<std::uint64_t>(size / std::gcd(size, moment.step));
    sequence.different = sequence.distinct = sequence.period;
    if (!is_missed) sequence.past_end = values;
  }
  return sequence;
}

std::optional<ElementSequence> time_sequence(const Moment& moment) {
  const std::int64_t start = second_of_day(moment.start);
  const std::int64_t end = second_of_day(moment.end);
  const std::int64_t span = moment.up ? end - start : start - end;
  if (moment.layout.compares_with_century() || span < moment.step) return std::nullopt;
  return on_circle(moment, seconds_per_day, span + 1);
}

std::optional<ElementSequence> unchecked_sequence(const Moment& moment) {
  const auto day = [](const MomentFields& f) {
    return f.year * days_in_unchecked_year + (f.month - 1) * longest_month + f.day - 1;
  };
  const auto is_whole = [](const MomentFields& f) {
    return f.month >= 1 && f.month <= months_in_year && f.day >= 1 && f.day <= longest_month;
  };
  const std::int64_t span =
      moment.up ? day(moment.end) - day(moment.start) : day(moment.start) - day(moment.end);
  if (!is_whole(moment.start) || !is_whole(moment.end) || span < moment.step) return std::nullopt;
  const std::int64_t years = std::abs(moment.end.year - moment.start.year) + 1;
  ElementSequence sequence = on_circle(moment, years * days_in_unchecked_year, span + 1);
  // Two-digit years that change their century on the way: no value lies between start and end.
  const bool is_torn =
      moment.up ? moment.end_key < moment.start_key : moment.end_key > moment.start_key;
  if (is_torn && moment.is_lead) {
    sequence = {};
    sequence.end = sequence.different = sequence.distinct = 1;
  } else if (is_torn) {
    sequence.past_end = 1;
  }
  return sequence;
}

std::optional<ElementSequence> sequence_of(const Moment& moment) {
  switch (moment.settings.kind) {
    case format_kind::date:
      return date_sequence(moment);
    case format_kind::date_unchecked:
      return unchecked_sequence(moment);
    case format_kind::time:
      return time_sequence(moment);
    default:
      return timestamp_sequence(moment);
  }
}

}  // namespace

std::optional<ElementSequence> moment_sequence(const SequenceContext& context,
                                               const FmtItemRec& settings, bool is_lead) {
  const MomentLayout layout(settings.kind, settings.width, context.layout_kind);
  Moment moment = {settings, layout};
  moment.is_lead = is_lead;
  moment.up = context.increment.sign == sign_plus;
  moment.step = context.increment.low;
  moment.start = fields_of(settings.start);
  moment.end = fields_of(settings.end);
  moment.start_key = layout.order_key(field_text(settings.start_text));
  moment.end_key = layout.order_key(field_text(settings.end_text));
  if (moment.step < 1 || moment.step > largest_step || moment.start_key < 0 || moment.end_key < 0 ||
      moment.start_key != layout.order_key(moment.start) ||
      moment.end_key != layout.order_key(moment.end)) {
    return std::nullopt;
  }
  auto sequence = sequence_of(moment);
  char shown[MomentLayout::max_size];
  if (sequence) sequence->size = layout.write_display(moment.start, shown);
  return sequence;
}

}  // namespace korvex::host
