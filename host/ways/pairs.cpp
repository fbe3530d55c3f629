#include "host/ways/pairs.h"

#include <bit>
#include <cassert>

#include "host/ways/numbers.h"

namespace korvex::ways {
namespace {

// The largest number whose square is not more, by Newton's method from above.
std::uint64_t square_root(std::uint64_t square) {
  if (square == 0) return 0;
  std::uint64_t root = std::uint64_t{1} << ((std::bit_width(square) + 1) / 2);
  while (true) {
    const std::uint64_t next = (root + square / root) / 2;
    if (next >= root) return root;
    root = next;
  }
}

}  // namespace

std::uint64_t pair_count(std::uint64_t n) {
  assert(n <= most_in_pairs);
  return n % 2 == 0 ? n / 2 * (n - 1) : (n - 1) / 2 * n;
}

// Before the pairs whose upper index is u are u * (u - 1) / 2 others, so that u is the root of
// twice the place, or the one after it.
IndexPair pair_at(std::uint64_t place) {
  assert(place < most_indices);
  std::uint64_t upper = square_root(2 * place);
  if (pair_count(upper + 1) <= place) ++upper;
  return {place - pair_count(upper), upper};
}

}  // namespace korvex::ways
