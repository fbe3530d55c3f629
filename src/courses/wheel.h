#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "courses/digit_pairs.h"

namespace korvex {

// The texts that the last characters of a value change through: entries of one size, one after the
// other in counting order.
struct Wheel {
  const char* entries = nullptr;
  std::size_t entry_size = 0;
  std::int64_t count = 0;
};

// The sizes of entries. Each has loops of its own in field_writer.cpp.
inline constexpr std::size_t character_entry = 1;
inline constexpr std::size_t pair_entry = 2;
inline constexpr std::size_t two_pairs_entry = 4;
inline constexpr std::size_t separated_pairs_entry = 5;

inline constexpr char digit_texts[] = "0123456789";
// The end of a number with one decimal.
inline constexpr char decimal_texts[] = ".0.1.2.3.4.5.6.7.8.9";

inline constexpr Wheel digit_wheel = {digit_texts, character_entry, 10};
inline constexpr Wheel decimal_wheel = {decimal_texts, pair_entry, 10};
inline constexpr Wheel digit_pair_wheel = {digit_pairs.data(), pair_entry, 100};

// The wheels of dates and times: two fields of two digits each, plain or with a separator in
// between, 0 for none.

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
