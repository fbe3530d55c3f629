#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "generate/digit_pairs.h"

namespace korvex {

// What the last characters of a text turn through from one value to the next: entries of one size,
// side by side in counting order.
struct Wheel {
  const char* entries = nullptr;
  std::size_t entry_size = 0;
  std::int64_t count = 0;
};

// The sizes of entries. Each has loops of its own in field_writer.cpp.
inline constexpr std::size_t character_entry = 1;
inline constexpr std::size_t pair_entry = 2;
inline constexpr std::size_t clock_entry = 4;
inline constexpr std::size_t separated_clock_entry = 5;

inline constexpr std::int64_t seconds_per_minute = 60;
inline constexpr std::int64_t seconds_per_hour = 3600;

// The minutes and seconds of an hour, side by side or with a separator.
template <std::size_t entry_size>
constexpr auto minutes_and_seconds(char separator) {
  std::array<char, entry_size* seconds_per_hour> entries = {};
  for (std::size_t second = 0; second < seconds_per_hour; ++second) {
    char* const entry = entries.data() + entry_size * second;
    for (std::size_t i = 0; i < 2; ++i) {
      entry[i] = digit_pairs[second / seconds_per_minute * 2 + i];
      entry[entry_size - 2 + i] = digit_pairs[second % seconds_per_minute * 2 + i];
    }
    if (entry_size == separated_clock_entry) entry[2] = separator;
  }
  return entries;
}

inline constexpr auto clock_texts = minutes_and_seconds<clock_entry>(0);
inline constexpr auto separated_clock_texts = minutes_and_seconds<separated_clock_entry>(':');
inline constexpr char digit_texts[] = "0123456789";
// The end of a number with one decimal.
inline constexpr char decimal_texts[] = ".0.1.2.3.4.5.6.7.8.9";

inline constexpr Wheel digit_wheel = {digit_texts, character_entry, 10};
inline constexpr Wheel decimal_wheel = {decimal_texts, pair_entry, 10};
inline constexpr Wheel digit_pair_wheel = {digit_pairs.data(), pair_entry, 100};
inline constexpr Wheel clock_wheel = {clock_texts.data(), clock_entry, seconds_per_hour};
inline constexpr Wheel separated_clock_wheel = {separated_clock_texts.data(), separated_clock_entry,
                                                seconds_per_hour};

}  // namespace korvex
