#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace korvex::sources {

// In which order things can be made that need each other.
struct MakingOrder {
  std::vector<std::size_t> order;   // each after all that it needs; empty when there is a circle
  std::vector<std::size_t> circle;  // each needs the next, and the last one the first; else empty
};

// `needs[i]`: what thing i needs, by number. Things without needs of each other keep their order.
// However long a chain of needs is, it takes no deep recursion.
MakingOrder making_order(std::span<const std::vector<std::size_t>> needs);

}  // namespace korvex::sources
