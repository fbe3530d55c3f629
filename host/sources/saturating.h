#pragma once

#include <cstdint>

#include "host/sources/knowledge.h"

namespace korvex::sources {

// Numbers of which the largest means "endless": it stays so whatever it is multiplied by.
constexpr std::uint64_t product(std::uint64_t a, std::uint64_t b) {
  return a != 0 && b > endless / a ? endless : a * b;
}

constexpr std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
  return b > endless - a ? endless : a + b;
}

}  // namespace korvex::sources
