#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/ways/fraction.h"
#include "host/ways/numbers.h"
#include "host/ways/shuffle.h"

namespace korvex::ways {

// How a whole is divided into categories: category i has the parts from bound i - 1 (0 for the
// first) up to bound i, out of as many as the last bound says.
class Proportions {
 public:
  // In the proportion of some weights, which need not add up to 1. Refused when none is above 0, or
  // when they have no common denominator up to `Fraction::most`.
  static Result<Proportions> of_weights(std::span<const Fraction> weights);

  // The first of two categories has the share, which is at most 1, and the second the rest.
  static Proportions of_share(Fraction share);

  std::size_t categories() const { return bounds_.size(); }
  std::uint64_t parts() const { return bounds_.back(); }
  const std::vector<std::uint64_t>& bounds() const { return bounds_; }

 private:
  explicit Proportions(std::vector<std::uint64_t> bounds) : bounds_(std::move(bounds)) {}

  std::vector<std::uint64_t> bounds_;
};

// To which category each of some records belongs. Records are dealt with in blocks of at least
// 1,024, a multiple of the parts: in every whole block the proportions hold exactly, in the last
// one (which is shorter) and so over all to the nearest record. With more records only the last
// block changes. Some 20 ns a record.
class ExactShares {
 public:
  // Up to `most_records`. `key` is one of Use::empty or Use::weights.
  ExactShares(Key key, const Proportions& proportions, std::uint64_t records);

  // Of a record below their number.
  std::size_t category_of(std::uint64_t record);

  // Makes each of some records its category.
  void take(std::span<std::uint64_t> records);

  // How many of all records belong to a category.
  std::uint64_t count(std::size_t category) const;

 private:
  // The upper ends of the categories among the places of a block.
  using Ends = std::vector<std::uint64_t>;

  static Ends ends(const Proportions& proportions, std::uint64_t size);
  const Ends& ends_of_latest() const { return blocks_.latest() < whole_blocks_ ? whole_ : last_; }
  const Permutation& order(const Ends& ends);

  Orders orders_;
  Rounds blocks_;
  std::uint64_t whole_blocks_;
  Ends whole_;
  Ends last_;
};

}  // namespace korvex::ways
