#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace korvex {

// "00" to "99", two characters each.
inline constexpr auto digit_pairs = [] {
  std::array<char, 200> pairs = {};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

// Writes `value`, 0 to 99, as two digits.
inline void write_pair(char* out, std::uint32_t value) {
  std::memcpy(out, digit_pairs.data() + 2 * std::size_t{value}, 2);
}

// Writes `value`, 0 to 9999, as four digits.
inline void write_four(char* out, std::uint32_t value) {
  write_pair(out, value / 100);
  write_pair(out + 2, value % 100);
}

// Writes `value`, 0 to 999,999,999, as nine digits.
inline void write_nine(char* out, std::uint32_t value) {
  const std::uint32_t upper = value / 10'000;
  write_four(out + 5, value % 10'000);
  write_four(out + 1, upper % 10'000);
  out[0] = static_cast<char>('0' + upper / 10'000);
}

}  // namespace korvex
