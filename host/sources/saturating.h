#pragma once

#include <cstdint>
#include <limits>
#include <numeric>

namespace korvex::sources {

constexpr std::uint64_t endless = std::numeric_limits<std::uint64_t>::max();

// Numbers of which the largest means "endless": it stays so whatever it is multiplied by.
constexpr std::uint64_t product(std::uint64_t a, std::uint64_t b) {
  return a != 0 && b > endless / a ? endless : a * b;
}

constexpr std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
  return b > endless - a ? endless : a + b;
}

constexpr std::uint64_t common_multiple(std::uint64_t a, std::uint64_t b) {
  return a == endless || b == endless ? endless : product(a / std::gcd(a, b), b);
}

}  // namespace korvex::sources
