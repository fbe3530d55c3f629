#include "generate/time_generator.h"

#include "generate/calendar.h"

namespace korvex {

namespace {

bool is_time(const MomentFields& f, int hour, int minute) {
  return f.hour == hour && f.minute == minute;
}

bool is_date(const MomentFields& f, int year, int month, int day) {
  return f.year == year && f.month == month && f.day == day;
}

}  // namespace

bool TimeGenerator::step() {
  const std::int64_t change = counts_up() ? step_size() : -step_size();
  std::int64_t second = (second_of_day(fields_) + change) % seconds_per_day;
  if (second < 0) second += seconds_per_day;
  set_time(second, fields_);
  return true;
}

bool TimestampGenerator::step() {
  const std::int64_t seconds = step_size();
  const std::int64_t second = fields_.second + (counts_up() ? seconds : -seconds);
  if (counts_up()) {
    if (is_date(fields_, 2038, 1, 19) && is_time(fields_, 3, 14) && second > 7) {
      return step_past_last(second);
    }
  } else if (is_date(fields_, 1970, 1, 1) && is_time(fields_, 9, 0) && second < 0) {
    return step_past_first();
  }
  // Within a minute nothing but the second moves; years at the ends take the long way.
  if (second >= 0 && second <= 59 && fields_.year > 1970 && fields_.year < 2038 &&
      fields_.month >= 1 && fields_.month <= 12 && fields_.day >= 1 && fields_.day <= 28 &&
      fields_.hour <= 23 && fields_.minute <= 59) {
    fields_.second = static_cast<int>(second);
    return true;
  }
  const std::int64_t change = counts_up() ? seconds : -seconds;
  return set_moment(second_number(fields_) + change, fields_) || overflow();
}

// Behind 2038-01-19 03:14:07 the calendar ends.
bool TimestampGenerator::step_past_last(std::int64_t second) {
  fields_.second = static_cast<int>(second);
  return range_.beyond_end(fields_, true) ? overflow() : true;
}

// Before 1970-01-01 09:00:00 it has not begun.
bool TimestampGenerator::step_past_first() {
  fields_.hour = 8;
  fields_.minute = 59;
  fields_.second = static_cast<int>(60 - step_size());
  return range_.beyond_end(fields_, false) ? overflow() : true;
}

}  // namespace korvex
