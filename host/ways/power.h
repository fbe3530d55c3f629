#pragma once

#include <cstdint>

#include "host/ways/fraction.h"

namespace korvex::ways {

// How many of its bits stand after the point of a power.
constexpr unsigned power_bits = 60;

// x to the power of minus `exponent`, in parts of 2^power_bits, by integers alone, so that no
// machine's rounding is in it: logarithm and power to the base of two, bit by bit, to 48 bits.
// `x` is at least 1. Smaller than one part is 0. Some 200 ns.
std::uint64_t negative_power(std::uint64_t x, Fraction exponent);

}  // namespace korvex::ways
