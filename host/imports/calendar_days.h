#pragma once

#include <chrono>
#include <cstdio>
#include <string>

namespace korvex::host {

// How a day is written in a layout: 20240229.
inline std::string layout_day(std::chrono::year_month_day day) {
  char text[16];
  std::snprintf(text, sizeof text, "%04d%02u%02u", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
  return text;
}

// And in SQL: 2024-02-29.
inline std::string sql_day(std::chrono::year_month_day day) {
  const std::string digits = layout_day(day);
  return digits.substr(0, 4) + "-" + digits.substr(4, 2) + "-" + digits.substr(6);
}

}  // namespace korvex::host
