#pragma once

#include <cstdint>

#include "host/ways/shuffle.h"

namespace korvex::ways {

// Two different indices, of which the order does not matter.
struct IndexPair {
  std::uint64_t lower = 0;
  std::uint64_t upper = 0;

  bool operator==(const IndexPair&) const = default;
};

constexpr std::uint64_t most_in_pairs = std::uint64_t{1} << 32;

// How many pairs n indices have: n * (n - 1) / 2, for n up to `most_in_pairs`.
std::uint64_t pair_count(std::uint64_t n);

// The pair at a place below 2^63, in the order (0, 1), (0, 2), (1, 2), (0, 3) and so on. Some 50
// ns.
IndexPair pair_at(std::uint64_t place);

// Every pair of n indices once in each round. For n from 2 to `most_in_pairs`.
class PairShuffle {
 public:
  PairShuffle(Key key, std::uint64_t n) : shuffle_(key, pair_count(n)) {}

  IndexPair at(std::uint64_t record) { return pair_at(shuffle_.at(record)); }

 private:
  Shuffle shuffle_;
};

}  // namespace korvex::ways
