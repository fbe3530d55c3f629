#include "host/ways/power.h"

#include <array>
#include <bit>
#include <cassert>

#include "host/ways/limits.h"

namespace korvex::ways {
namespace {

// Of a logarithm, after its point.
constexpr unsigned fraction_bits = 48;

// The scale of numbers from 1/2 to 1, and from 1 to 2.
constexpr unsigned scale_bits = 63;

constexpr std::uint64_t square_root(Wide square) {
  std::uint64_t root = 0;
  for (std::uint64_t bit = std::uint64_t{1} << 63; bit != 0; bit >>= 1) {
    const std::uint64_t larger = root | bit;
    if (Wide{larger} * larger <= square) root = larger;
  }
  return root;
}

// Two to the power of -1/2, -1/4, -1/8 and so on, each the root of the one before it.
constexpr auto halvings = [] {
  std::array<std::uint64_t, fraction_bits> powers{};
  std::uint64_t power = std::uint64_t{1} << (scale_bits - 1);
  for (std::uint64_t& next : powers) next = power = square_root(Wide{power} << scale_bits);
  return powers;
}();

// To the base of two. The mantissa is squared for each bit: when it passes 2, the bit is set.
std::uint64_t logarithm(std::uint64_t x) {
  const auto whole = static_cast<unsigned>(std::bit_width(x)) - 1;
  std::uint64_t mantissa = x << (scale_bits - whole);
  std::uint64_t result = whole;
  for (unsigned i = 0; i < fraction_bits; ++i) {
    const Wide square = Wide{mantissa} * mantissa;
    const bool is_set = (square >> (2 * scale_bits + 1)) != 0;
    mantissa = static_cast<std::uint64_t>(square >> (scale_bits + is_set));
    result = result << 1 | is_set;
  }
  return result;
}

// Two to the power of minus `exponent`, which has `fraction_bits` after its point.
std::uint64_t halved(Wide exponent) {
  const Wide whole = exponent >> fraction_bits;
  if (whole > power_bits) return 0;
  std::uint64_t result = std::uint64_t{1} << scale_bits;
  for (unsigned i = 0; i < fraction_bits; ++i) {
    if ((exponent >> (fraction_bits - 1 - i) & 1) == 0) continue;
    result = static_cast<std::uint64_t>(Wide{result} * halvings[i] >> scale_bits);
  }
  return result >> (scale_bits - power_bits) >> static_cast<unsigned>(whole);
}

}  // namespace

std::uint64_t negative_power(std::uint64_t x, Fraction exponent) {
  assert(x >= 1);
  return halved(Wide{logarithm(x)} * exponent.numerator / exponent.denominator);
}

}  // namespace korvex::ways
