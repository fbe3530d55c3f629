#pragma once

#include <cstdint>
#include <vector>

#include "host/ways/fraction.h"
#include "host/ways/key.h"
#include "host/ways/refusal.h"

namespace korvex::ways {

// How much the first values come before the others: the k-th is drawn in proportion to 1 / k^skew.
class Skew {
 public:
  static constexpr std::uint64_t most = 10;

  // What names and words of a language have, about.
  Skew() : exponent_{11, 10} {}

  // Refused when 0 or above `most`.
  static Result<Skew> make(Fraction exponent);

  Fraction exponent() const { return exponent_; }

 private:
  explicit Skew(Fraction exponent) : exponent_(exponent) {}

  Fraction exponent_;
};

// Indices drawn with replacement by Zipf's law, 0 the most often. The first 4,096 have a share of
// their own; beyond, each range from a number to its double has 64 equal cells, and within a cell
// all indices are drawn alike. Made in up to 2 ms, and takes up to 120 KB, whatever n is; 20 to 60
// ns a record.
class Zipf {
 public:
  // For n from 1 to 2^63.
  Zipf(Key key, std::uint64_t n, Skew skew);

  std::uint64_t at(std::uint64_t record) const;

 private:
  // Indices that are drawn alike: from `first` up to the next cell's.
  struct Cell {
    std::uint64_t first;
    std::uint64_t end_share;  // of all cells up to this one, out of the last cell's
  };

  Key key_;
  std::uint64_t n_;
  std::vector<Cell> cells_;
};

// How many of its bits are after the point of a power.
constexpr unsigned power_bits = 60;

// x to the power of minus `exponent`, in parts of 2^power_bits, by integers alone, so that no
// machine's rounding is in it: logarithm and power to the base of two, bit by bit, to 48 bits.
// `x` is at least 1. Smaller than one part is 0. Some 200 ns.
std::uint64_t negative_power(std::uint64_t x, Fraction exponent);

}  // namespace korvex::ways
