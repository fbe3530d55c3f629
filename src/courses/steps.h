#pragma once

#include <cstdint>
#include <numeric>

// Numbers of steps, texts and records. Counts of 64 bits that stop at their largest value, which
// stands for "never": no run comes that far.
namespace korvex {

using Steps = std::uint64_t;

inline constexpr Steps endless = ~Steps{0};

inline Steps sum(Steps left, Steps right) {
  Steps result = 0;
  return __builtin_add_overflow(left, right, &result) ? endless : result;
}

inline Steps product(Steps left, Steps right) {
  Steps result = 0;
  return __builtin_mul_overflow(left, right, &result) ? endless : result;
}

inline Steps common_multiple(Steps left, Steps right) {
  if (left == endless || right == endless) return endless;
  return product(left / std::gcd(left, right), right);
}

}  // namespace korvex
