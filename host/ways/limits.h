#pragma once

#include <cstdint>

// How far the arithmetic of ways goes, and the integer that has room for its products.
namespace korvex::ways {

__extension__ using Wide = unsigned __int128;

// Of records and of parents: the product of two such numbers, doubled, still fits into a Wide.
constexpr std::uint64_t most_records = 1'000'000'000'000'000'000;

// Of indices in one order.
constexpr std::uint64_t most_indices = std::uint64_t{1} << 63;

}  // namespace korvex::ways
