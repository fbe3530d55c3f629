#pragma once

#include <cstdint>
#include <string_view>

#include "host/ways/refusal.h"

namespace korvex::ways {

// An exact number from 0 on, in lowest terms. Neither part is above `Fraction::most`.
struct Fraction {
  static constexpr std::uint64_t most = 1'000'000'000'000'000'000;

  std::uint64_t numerator = 0;
  std::uint64_t denominator = 1;

  bool operator==(const Fraction&) const = default;
};

// Reads a number as people and layouts write it: "3", "0.05", "1_000.5", "5e-2", "1/3". What is no
// number, below 0, or has a part above `Fraction::most`, is refused.
Result<Fraction> parse_fraction(std::string_view text);

// The same for a share: no more than 1.
Result<Fraction> parse_share(std::string_view text);

}  // namespace korvex::ways
