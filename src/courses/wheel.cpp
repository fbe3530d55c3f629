#include "courses/wheel.h"

#include <array>
#include <numeric>

namespace korvex {

namespace {

// How many values the second field has for each value of the first.
template <std::size_t count>
using FieldSizes = std::array<int, count>;

constexpr auto hour_sizes = [] {
  FieldSizes<minutes_per_hour> sizes = {};
  sizes.fill(seconds_per_minute);
  return sizes;
}();

constexpr auto long_year_sizes = [] {
  FieldSizes<months_per_year> sizes = {};
  sizes.fill(longest_month);
  return sizes;
}();

constexpr FieldSizes<months_per_year> common_year_sizes = {31, 28, 31, 30, 31, 30,
                                                           31, 31, 30, 31, 30, 31};
constexpr FieldSizes<months_per_year> leap_year_sizes = {31, 29, 31, 30, 31, 30,
                                                         31, 31, 30, 31, 30, 31};

// Fields that count from `first`.
template <const auto& sizes, int first, char separator>
constexpr auto make_texts() {
  constexpr std::size_t entry_size = separator == 0 ? two_pairs_entry : separated_pairs_entry;
  constexpr auto count = static_cast<std::size_t>(std::accumulate(sizes.begin(), sizes.end(), 0));
  std::array<char, count* entry_size> texts = {};
  char* entry = texts.data();
  for (std::size_t high = 0; high < sizes.size(); ++high) {
    for (int low = 0; low < sizes[high]; ++low, entry += entry_size) {
      const auto high_pair = 2 * (high + first);
      const auto low_pair = 2 * static_cast<std::size_t>(low + first);
      for (std::size_t i = 0; i < 2; ++i) {
        entry[i] = digit_pairs[high_pair + i];
        entry[entry_size - 2 + i] = digit_pairs[low_pair + i];
      }
      if (separator != 0) entry[2] = separator;
    }
  }
  return texts;
}

template <const auto& sizes, int first, char separator>
const Wheel& wheel_of() {
  static constexpr auto texts = make_texts<sizes, first, separator>();
  static constexpr std::size_t entry_size =
      separator == 0 ? two_pairs_entry : separated_pairs_entry;
  static constexpr Wheel wheel = {texts.data(), entry_size,
                                  static_cast<std::int64_t>(texts.size() / entry_size)};
  return wheel;
}

template <const auto& sizes>
const Wheel& year_wheel(char separator) {
  switch (separator) {
    case '/':
      return wheel_of<sizes, 1, '/'>();
    case '-':
      return wheel_of<sizes, 1, '-'>();
    default:
      return wheel_of<sizes, 1, 0>();
  }
}

}  // namespace

const Wheel& clock_wheel(char separator) {
  return separator == 0 ? wheel_of<hour_sizes, 0, 0>() : wheel_of<hour_sizes, 0, ':'>();
}

const Wheel& calendar_wheel(bool is_leap_year, char separator) {
  return is_leap_year ? year_wheel<leap_year_sizes>(separator)
                      : year_wheel<common_year_sizes>(separator);
}

const Wheel& long_month_wheel(char separator) { return year_wheel<long_year_sizes>(separator); }

}  // namespace korvex
