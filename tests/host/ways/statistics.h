#pragma once

#include <cmath>
#include <cstdint>
#include <map>
#include <numeric>
#include <string_view>
#include <utility>
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

// The same of two columns of one length, for each pair of their values, if neither followed from
// the other.
inline double dependence(std::string_view left, std::string_view right) {
  std::map<char, double> lefts;
  std::map<char, double> rights;
  std::map<std::pair<char, char>, double> pairs;
  for (std::size_t i = 0; i < left.size(); ++i) {
    ++lefts[left[i]];
    ++rights[right[i]];
    ++pairs[{left[i], right[i]}];
  }
  double chi_square = 0;
  for (const auto& [one, ones] : lefts) {
    for (const auto& [other, others] : rights) {
      const double expected = ones * others / static_cast<double>(left.size());
      const double difference = pairs[{one, other}] - expected;
      chi_square += difference * difference / expected;
    }
  }
  const auto freedom = static_cast<double>((lefts.size() - 1) * (rights.size() - 1));
  return (chi_square - freedom) / std::sqrt(2 * freedom);
}

constexpr double surely_uneven = 4;

}  // namespace korvex::ways
