#include "generate/time_generator.h"

#include "generate/calendar.h"
#include "generate/moment_wheels.h"

namespace korvex {

namespace {

constexpr int last_hour = 23;

bool is_time(const MomentFields& f, int hour, int minute) {
  return f.hour == hour && f.minute == minute;
}

bool is_date(const MomentFields& f, int year, int month, int day) {
  return f.year == year && f.month == month && f.day == day;
}

}  // namespace

const Wheel* ClockGenerator::wheel() const {
  return fields_.hour <= last_hour ? &clock_wheel(layout_.time_separator()) : nullptr;
}

int ClockGenerator::place_of(int minute, int second) const {
  const bool is_regular =
      minute >= 0 && minute < minutes_per_hour && second >= 0 && second < seconds_per_minute;
  return is_regular ? minute * seconds_per_minute + second : -1;
}

void ClockGenerator::set_place(int place) {
  fields_.minute = place / seconds_per_minute;
  fields_.second = place % seconds_per_minute;
}

bool TimeGenerator::change_fields() {
  std::int64_t second = (second_of_day(fields_) + change()) % seconds_per_day;
  if (second < 0) second += seconds_per_day;
  set_time(second, fields_);
  return true;
}

// Away from the calendar's first day and last year a step within the hour needs no further look.
const Wheel* TimestampGenerator::wheel() const {
  const MomentFields& f = fields_;
  const bool inside_calendar = f.year >= first_calendar_year && f.year < last_calendar_year &&
                               is_day(f.year, f.month, f.day) && !is_date(f, 1970, 1, 1);
  return inside_calendar ? ClockGenerator::wheel() : nullptr;
}

// Behind the calendar's end the seconds count on where no end value stops them.
bool TimestampGenerator::stays_in_places() const {
  return range_.text_is_behind_end({2038, 1, 19, 3, 14, 8});
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
  if (wheel() != nullptr && second >= 0 && second < seconds_per_day) {
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
