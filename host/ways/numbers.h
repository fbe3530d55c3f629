#pragma once

#include <cstdint>
#include <limits>

// How far the arithmetic of ways goes, and the integer that has room for its products.
namespace korvex::ways {

__extension__ using Wide = unsigned __int128;

// Of records and of parents: the product of two such numbers, doubled, still fits into a Wide.
constexpr std::uint64_t most_records = 1'000'000'000'000'000'000;

// Of indices in one order.
constexpr std::uint64_t most_indices = std::uint64_t{1} << 63;

// A number that is known to lie between two others, both included.
struct Count {
  std::uint64_t least = 0;
  std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

  static constexpr Count of(std::uint64_t number) { return {number, number}; }
  constexpr bool is_exact() const { return least == most; }

  bool operator==(const Count&) const = default;
};

}  // namespace korvex::ways
