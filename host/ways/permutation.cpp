#include "host/ways/permutation.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <numeric>
#include <utility>

#include "host/ways/limits.h"
#include "host/ways/mixing.h"

namespace korvex::ways {
namespace {

// The fewer numbers, the longer two places of one remainder stay related.
unsigned steps_for(std::uint64_t n) { return n <= 256 ? 10 : n <= 4096 ? 8 : 6; }

std::uint64_t step_value(std::uint64_t half, std::uint64_t key) {
  std::uint64_t value = (half + key) * (std::rotl(key, 32) | 1);
  value ^= value >> 32;
  return value * golden;
}

}  // namespace

Permutation::Permutation(Key key, std::uint64_t n, Tweak tweak) : n_(n) {
  assert(n >= 1 && n <= most_indices);
  const std::uint64_t state = absorb(absorb(key.bits, tweak.round), tweak.parent);
  if (n <= most_in_table) {
    draw_table(state);
  } else {
    draw_steps(state);
  }
}

void Permutation::draw_table(std::uint64_t state) {
  const auto count = static_cast<std::uint8_t>(n_);
  std::iota(table_.begin(), table_.begin() + count, std::uint8_t{0});
  for (std::uint64_t left = count; left > 1; --left) {
    std::swap(table_[left - 1], table_[part_of(absorb(state, left), left)]);
  }
}

void Permutation::draw_steps(std::uint64_t state) {
  steps_ = steps_for(n_);
  for (unsigned i = 0; i < steps_; ++i) step_keys_[i] = absorb(state, i);
  remainder_bits_ = static_cast<unsigned>(std::bit_width(n_ - 1)) / 2;
  const std::uint64_t remainders = std::uint64_t{1} << remainder_bits_;
  quotients_ = n_ / remainders + (n_ % remainders != 0);
}

std::uint64_t Permutation::forward(std::uint64_t place) const {
  const unsigned shift = 64 - remainder_bits_;
  std::uint64_t quotient = place >> remainder_bits_;
  std::uint64_t remainder = place & ((std::uint64_t{1} << remainder_bits_) - 1);
  for (unsigned i = 0; i < steps_; i += 2) {
    quotient += part_of(step_value(remainder, step_keys_[i]), quotients_);
    if (quotient >= quotients_) quotient -= quotients_;
    remainder ^= step_value(quotient, step_keys_[i + 1]) >> shift;
  }
  return quotient << remainder_bits_ | remainder;
}

std::uint64_t Permutation::backward(std::uint64_t number) const {
  const unsigned shift = 64 - remainder_bits_;
  std::uint64_t quotient = number >> remainder_bits_;
  std::uint64_t remainder = number & ((std::uint64_t{1} << remainder_bits_) - 1);
  for (unsigned i = steps_; i > 0; i -= 2) {
    remainder ^= step_value(quotient, step_keys_[i - 1]) >> shift;
    const std::uint64_t moved = part_of(step_value(remainder, step_keys_[i - 2]), quotients_);
    quotient += quotient < moved ? quotients_ - moved : std::uint64_t{0} - moved;
  }
  return quotient << remainder_bits_ | remainder;
}

std::uint64_t Permutation::place_of(std::uint64_t number) const {
  if (n_ <= most_in_table) {
    const auto* found = std::find(table_.begin(), table_.begin() + n_, number);
    return static_cast<std::uint64_t>(found - table_.begin());
  }
  do number = backward(number);
  while (number >= n_);
  return number;
}

}  // namespace korvex::ways
