#pragma once

#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

namespace korvex::ways {

// By how many standard deviations the chi-square of some counts is off, where all are equally
// likely. Keys in tests are fixed, so that a good scheme stays below `surely_uneven`.
inline double unevenness(const std::vector<std::uint64_t>& counts) {
  const double total = static_cast<double>(std::accumulate(counts.begin(), counts.end(), 0ULL));
  const double expected = total / static_cast<double>(counts.size());
  double chi_square = 0;
  for (const std::uint64_t count : counts) {
    const double difference = static_cast<double>(count) - expected;
    chi_square += difference * difference / expected;
  }
  const auto freedom = static_cast<double>(counts.size() - 1);
  return (chi_square - freedom) / std::sqrt(2 * freedom);
}

constexpr double surely_uneven = 4;

}  // namespace korvex::ways
