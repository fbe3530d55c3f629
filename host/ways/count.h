#pragma once

#include <cstdint>
#include <limits>

namespace korvex::ways {

// A number that is known to lie between two others, both included.
struct Count {
  std::uint64_t least = 0;
  std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

  static constexpr Count of(std::uint64_t number) { return {number, number}; }
  constexpr bool is_exact() const { return least == most; }

  bool operator==(const Count&) const = default;
};

}  // namespace korvex::ways
