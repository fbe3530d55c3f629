#pragma once

#include "courses/wheel.h"

// The wheels of dates and times: two fields of two digits each, plain or with a separator in
// between, 0 for none.
namespace korvex {

// Minutes and seconds of an hour.
const Wheel& clock_wheel(char separator);

// Months and days of a calendar year.
const Wheel& calendar_wheel(bool is_leap_year, char separator);

// Months and days of a year whose months all have 31 days.
const Wheel& long_month_wheel(char separator);

inline constexpr int seconds_per_minute = 60;
inline constexpr int minutes_per_hour = 60;
inline constexpr int months_per_year = 12;
inline constexpr int longest_month = 31;

}  // namespace korvex
