#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "host/ways/key.h"

namespace korvex::ways {

// Which of the orders of one key: another one in every round, and for every parent.
struct Tweak {
  std::uint64_t round = 0;
  std::uint64_t parent = 0;

  bool operator==(const Tweak&) const = default;
};

// An order of the numbers below n that looks random and follows from key, n and tweak alone: each
// number has one place and each place one number. For n from 1 to 2^63. Takes no memory for n; made
// in some 20 ns (up to 100 for n of 64), asked in 10 to 15, or in half of that for many at once.
//
// Up to `most_in_table` numbers change places in a table (Fisher, Yates; Durstenfeld 1964). More
// go through a network (Luby, Rackoff 1988) of some steps over pairs (quotient, remainder), of
// which the quotient is moved around its own circle, so that the pairs are hardly more than n; what
// falls outside goes through again (Black, Rogaway 2002) and so never collides. It resists
// statistics, not an attacker.
class Permutation {
 public:
  static constexpr std::uint64_t most_in_table = 64;

  Permutation(Key key, std::uint64_t n, Tweak tweak = {});

  std::uint64_t size() const { return n_; }

  // The number at a place below n.
  std::uint64_t at(std::uint64_t place) const {
    if (n_ <= most_in_table) return table_[place];
    do place = forward(place);
    while (place >= n_);
    return place;
  }

  // Makes each of some places its number. Takes less time for each than asking for them one by one,
  // since none waits for another.
  void take(std::span<std::uint64_t> places) const;

  // The place of a number below n.
  std::uint64_t place_of(std::uint64_t number) const;

 private:
  static constexpr unsigned most_steps = 10;

  struct Step {
    std::uint64_t key = 0;
    std::uint64_t factor = 0;

    std::uint64_t value(std::uint64_t half) const;
  };

  void draw_table(std::uint64_t state);
  void draw_steps(std::uint64_t state);
  std::uint64_t forward(std::uint64_t place) const;
  template <unsigned count>
  void take_forward(std::span<std::uint64_t> places) const;
  std::uint64_t backward(std::uint64_t number) const;

  std::uint64_t n_;
  // Either the table, or what the network consists of.
  std::array<std::uint8_t, most_in_table> table_{};
  std::array<Step, most_steps> steps_{};
  unsigned step_count_ = 0;
  std::uint64_t quotients_ = 0;
  unsigned remainder_bits_ = 0;
};

}  // namespace korvex::ways
