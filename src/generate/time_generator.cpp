#include "generate/time_generator.h"

#include "generate/calendar.h"

namespace korvex {

namespace {

constexpr int last_hour = 23;
constexpr int last_minute = 59;
constexpr int last_second = 59;
constexpr int last_place = static_cast<int>(seconds_per_hour) - 1;

bool is_regular_time(const MomentFields& f) {
  return f.hour <= last_hour && f.minute <= last_minute && f.second <= last_second;
}

bool is_time(const MomentFields& f, int hour, int minute) {
  return f.hour == hour && f.minute == minute;
}

bool is_date(const MomentFields& f, int year, int month, int day) {
  return f.year == year && f.month == month && f.day == day;
}

}  // namespace

MomentGenerator::RunLimits TimeGenerator::run_limits() const {
  return is_regular_time(fields_) ? RunLimits{0, last_place} : RunLimits{};
}

bool TimeGenerator::change_fields() {
  std::int64_t second = (second_of_day(fields_) + change()) % seconds_per_day;
  if (second < 0) second += seconds_per_day;
  set_time(second, fields_);
  return true;
}

// Away from the calendar's first day and last month a step within the hour needs no further look.
MomentGenerator::RunLimits TimestampGenerator::run_limits() const {
  const MomentFields& f = fields_;
  const bool inside_calendar = f.year >= 1970 && f.year < 2038 && f.month >= 1 && f.month <= 12 &&
                               f.day >= 1 && f.day <= days_in_month(f.year, f.month) &&
                               is_regular_time(f) && !is_date(f, 1970, 1, 1);
  return inside_calendar ? RunLimits{0, last_place} : RunLimits{};
}

// Behind the calendar's end the seconds count on where no end value stops them.
bool TimestampGenerator::stays_in_places() const {
  MomentFields last = {2038, 1, 19, 3, 14, 8};
  return range_.text_is_behind_end(last);
}

bool TimestampGenerator::change_fields() {
  const std::int64_t next = fields_.second + change();
  if (counts_up()) {
    if (is_date(fields_, 2038, 1, 19) && is_time(fields_, 3, 14) && next > 7) {
      return step_past_last(next);
    }
  } else if (is_date(fields_, 1970, 1, 1) && is_time(fields_, 9, 0) && next < 0) {
    return overflow();
  }
  // Within a day of the calendar nothing but the clock moves.
  const std::int64_t second = second_of_day(fields_) + change();
  if (!run_limits().is_empty() && second >= 0 && second < seconds_per_day) {
    set_time(second, fields_);
    return true;
  }
  return set_moment(second_number(fields_) + change(), fields_) || overflow();
}

// Behind 2038-01-19 03:14:07 the calendar ends, unless the end value's text says otherwise.
bool TimestampGenerator::step_past_last(std::int64_t second) {
  fields_.second = static_cast<int>(second);
  return !range_.text_is_behind_end(fields_) || overflow();
}

}  // namespace korvex
