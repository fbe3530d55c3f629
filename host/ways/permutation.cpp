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

// Fewer pairs than these mix badly.
constexpr std::uint64_t least_domain = 64;
constexpr int least_domain_bits = 6;

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

// A fraction of 128 bits is a place among the n! orders; multiplied by n, n - 1 and so on, what
// passes 1 each time are the digits of that place, exactly as by division.
void Permutation::draw_table(std::uint64_t state) {
  const auto count = static_cast<std::uint8_t>(n_);
  std::iota(table_.begin(), table_.begin() + count, std::uint8_t{0});
  std::uint64_t high = absorb(state, 0);
  std::uint64_t low = absorb(state, 1);
  for (std::uint64_t left = count; left > 1; --left) {
    const Wide product_low = Wide{low} * left;
    const Wide product_high = Wide{high} * left + (product_low >> 64);
    low = static_cast<std::uint64_t>(product_low);
    high = static_cast<std::uint64_t>(product_high);
    std::swap(table_[left - 1], table_[static_cast<std::size_t>(product_high >> 64)]);
  }
}

void Permutation::draw_steps(std::uint64_t state) {
  steps_ = n_ <= most_with_more_steps ? more_steps : steps;
  for (unsigned i = 0; i < steps_; ++i) step_keys_[i] = absorb(state, i);
  const std::uint64_t domain = std::max(n_, least_domain);
  remainder_bits_ =
      static_cast<unsigned>(std::max(least_domain_bits, static_cast<int>(std::bit_width(n_ - 1)))) /
      2;
  const std::uint64_t remainders = std::uint64_t{1} << remainder_bits_;
  quotients_ = domain / remainders + (domain % remainders != 0);
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
