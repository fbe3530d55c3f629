#pragma once

#include <cstdint>

#include "courses/moment_text.h"

// Counting on the proleptic Gregorian calendar, between the first and the last moment that values
// may take: 1970-01-01 09:00:00 and 2038-01-19 03:14:07.
namespace korvex {

inline constexpr MomentFields first_moment = {1970, 1, 1, 9, 0, 0};
inline constexpr MomentFields last_moment = {2038, 1, 19, 3, 14, 7};

bool is_leap_year(int year);

// Days since the first of January, of a day that is one.
int day_of_year(int year, int month, int day);

// Days since 1970-01-01 of the fields' date. Months and days beyond their range count on, as they
// do on a calendar that carries.
std::int64_t day_number(const MomentFields& fields);

// Sets the date fields; false, and nothing set, when the day lies before 1970-01-01 or after
// 2038-01-19.
bool set_date(std::int64_t day, MomentFields& fields);

// Seconds since 1970-01-01 00:00:00 of all fields, and back; false outside the range.
std::int64_t second_number(const MomentFields& fields);
bool set_moment(std::int64_t second, MomentFields& fields);

inline constexpr std::int64_t seconds_per_day = 86'400;

// Seconds since midnight of the clock fields, and back.
std::int64_t second_of_day(const MomentFields& fields);
void set_time(std::int64_t second_of_day, MomentFields& fields);

}  // namespace korvex
