#include "courses/calendar.h"

#include <chrono>

namespace korvex {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr std::int64_t days_to(int y, unsigned m, unsigned d) {
  return sys_days(year(y) / std::chrono::month(m) / std::chrono::day(d)).time_since_epoch().count();
}

// Years that a crafted value may name beyond any calendar, and a day outside every range for them.
constexpr int last_numbered_year = 9999;
constexpr std::int64_t no_such_day = 1'000'000'000;

constexpr std::int64_t last_day = days_to(2038, 1, 19);
constexpr std::int64_t first_second = 9 * 3600;
constexpr std::int64_t last_second = last_day * seconds_per_day + 3 * 3600 + 14 * 60 + 7;

}  // namespace

bool is_leap_year(int y) { return year(y).is_leap(); }

int day_of_year(int y, int m, int d) {
  return static_cast<int>(days_to(y, static_cast<unsigned>(m), static_cast<unsigned>(d)) -
                          days_to(y, 1, 1));
}

std::int64_t day_number(const MomentFields& fields) {
  const int months = int{fields.month} - 1;
  const int whole_years = months >= 0 ? months / 12 : -1;
  const int numbered_year = fields.year + whole_years;
  if (numbered_year > last_numbered_year) return no_such_day;
  const year y(numbered_year);
  const auto month = static_cast<unsigned>(months - 12 * whole_years + 1);
  const sys_days first(y / std::chrono::month(month) / std::chrono::day(1));
  return first.time_since_epoch().count() + int{fields.day} - 1;
}

bool set_date(std::int64_t day, MomentFields& fields) {
  if (day < 0 || day > last_day) return false;
  const year_month_day date{sys_days(days(day))};
  fields.year = static_cast<int>(date.year());
  fields.month = static_cast<int>(static_cast<unsigned>(date.month()));
  fields.day = static_cast<int>(static_cast<unsigned>(date.day()));
  return true;
}

std::int64_t second_of_day(const MomentFields& fields) {
  return (std::int64_t{fields.hour} * 60 + fields.minute) * 60 + fields.second;
}

std::int64_t second_number(const MomentFields& fields) {
  return day_number(fields) * seconds_per_day + second_of_day(fields);
}

void set_time(std::int64_t second_of_day, MomentFields& fields) {
  fields.hour = static_cast<int>(second_of_day / 3600);
  fields.minute = static_cast<int>(second_of_day / 60 % 60);
  fields.second = static_cast<int>(second_of_day % 60);
}

bool set_moment(std::int64_t second, MomentFields& fields) {
  if (second < first_second || second > last_second) return false;
  set_date(second / seconds_per_day, fields);
  set_time(second % seconds_per_day, fields);
  return true;
}

}  // namespace korvex
