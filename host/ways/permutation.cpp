#include "host/ways/permutation.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <numeric>
#include <utility>

#include "host/ways/mixing.h"
#include "host/ways/numbers.h"

namespace korvex::ways {
namespace {

constexpr unsigned few_steps = 6;
constexpr unsigned some_steps = 8;

}  // namespace

inline std::uint64_t Permutation::Step::value(std::uint64_t half) const {
  std::uint64_t value = (half + key) * factor;
  value ^= value >> 32;
  return value * golden;
}

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
  // The fewer numbers, the longer two places of one remainder stay related.
  step_count_ = n_ <= 256 ? most_steps : n_ <= 4096 ? some_steps : few_steps;
  for (unsigned i = 0; i < step_count_; ++i) {
    const std::uint64_t key = absorb(state, i);
    steps_[i] = {key, std::rotl(key, 32) | 1};
  }
  remainder_bits_ = static_cast<unsigned>(std::bit_width(n_ - 1)) / 2;
  const std::uint64_t remainders = std::uint64_t{1} << remainder_bits_;
  quotients_ = n_ / remainders + (n_ % remainders != 0);
}

std::uint64_t Permutation::forward(std::uint64_t place) const {
  const unsigned shift = 64 - remainder_bits_;
  std::uint64_t quotient = place >> remainder_bits_;
  std::uint64_t remainder = place & ((std::uint64_t{1} << remainder_bits_) - 1);
  for (unsigned i = 0; i < step_count_; i += 2) {
    quotient += part_of(steps_[i].value(remainder), quotients_);
    if (quotient >= quotients_) quotient -= quotients_;
    remainder ^= steps_[i + 1].value(quotient) >> shift;
  }
  return quotient << remainder_bits_ | remainder;
}

std::uint64_t Permutation::backward(std::uint64_t number) const {
  const unsigned shift = 64 - remainder_bits_;
  std::uint64_t quotient = number >> remainder_bits_;
  std::uint64_t remainder = number & ((std::uint64_t{1} << remainder_bits_) - 1);
  for (unsigned i = step_count_; i > 0; i -= 2) {
    remainder ^= steps_[i - 1].value(quotient) >> shift;
    const std::uint64_t moved = part_of(steps_[i - 2].value(remainder), quotients_);
    quotient += quotient < moved ? quotients_ - moved : std::uint64_t{0} - moved;
  }
  return quotient << remainder_bits_ | remainder;
}

// Several places go through each step side by side, so that none waits for what is multiplied for
// another. With both numbers known, the compiler keeps all of them in registers.
template <unsigned count>
void Permutation::take_forward(std::span<std::uint64_t> places) const {
  constexpr std::size_t lanes = 8;
  const unsigned shift = 64 - remainder_bits_;
  const std::uint64_t mask = (std::uint64_t{1} << remainder_bits_) - 1;
  for (; places.size() >= lanes; places = places.subspan(lanes)) {
    std::array<std::uint64_t, lanes> quotients;
    std::array<std::uint64_t, lanes> remainders;
    for (std::size_t k = 0; k < lanes; ++k) {
      quotients[k] = places[k] >> remainder_bits_;
      remainders[k] = places[k] & mask;
    }
    for (unsigned i = 0; i < count; i += 2) {
      const Step move = steps_[i];
      const Step change = steps_[i + 1];
      for (std::size_t k = 0; k < lanes; ++k) {
        const std::uint64_t moved = quotients[k] + part_of(move.value(remainders[k]), quotients_);
        quotients[k] = moved < quotients_ ? moved : moved - quotients_;
        remainders[k] ^= change.value(quotients[k]) >> shift;
      }
    }
    for (std::size_t k = 0; k < lanes; ++k)
      places[k] = quotients[k] << remainder_bits_ | remainders[k];
    for (std::size_t k = 0; k < lanes; ++k) {
      while (places[k] >= n_) [[unlikely]] places[k] = forward(places[k]);
    }
  }
  for (std::uint64_t& place : places) place = at(place);
}

void Permutation::take(std::span<std::uint64_t> places) const {
  if (n_ <= most_in_table) {
    for (std::uint64_t& place : places) place = table_[place];
  } else if (step_count_ == few_steps) {
    take_forward<few_steps>(places);
  } else if (step_count_ == some_steps) {
    take_forward<some_steps>(places);
  } else {
    take_forward<most_steps>(places);
  }
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
