#include "host/ways/zipf.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>

#include "host/ways/draw.h"
#include "host/ways/numbers.h"

namespace korvex::ways {
namespace {

constexpr std::uint64_t single_indices = 4096;
constexpr std::uint64_t cells_per_doubling = 64;

// Of the cell that begins with an index.
std::uint64_t cell_width(std::uint64_t first) {
  return first < single_indices ? 1 : std::bit_floor(first) / cells_per_doubling;
}

// Has room for draws that are multiplied by the width of a cell.
constexpr int share_bits = 63;

int wide_bits(Wide number) {
  const auto high = static_cast<std::uint64_t>(number >> 64);
  return high != 0 ? 64 + static_cast<int>(std::bit_width(high))
                   : static_cast<int>(std::bit_width(static_cast<std::uint64_t>(number)));
}

}  // namespace

Result<Skew> Skew::make(Fraction exponent) {
  if (exponent.numerator == 0 || exponent.numerator > Wide{most} * exponent.denominator) {
    return Refusal{"a skew is above 0 and at most 10"};
  }
  return Skew(exponent);
}

// A cell weighs as many times as it has indices what its middle one does. Index i has the rank
// i + 1; all ranks are doubled, so that every middle is a whole number.
Zipf::Zipf(Key key, std::uint64_t n, Skew skew) : key_(key), n_(n) {
  assert(n >= 1 && n <= most_indices);
  std::vector<Wide> sums;
  Wide sum = 0;
  for (std::uint64_t first = 0; first < n;) {
    const std::uint64_t width = std::min(cell_width(first), n - first);
    sum += Wide{width} * negative_power(2 * first + width + 1, skew.exponent());
    cells_.push_back({first, 0});
    sums.push_back(sum);
    first += width;
  }
  const int excess = std::max(0, wide_bits(sum) - share_bits);
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    cells_[i].end_share = static_cast<std::uint64_t>(sums[i] >> excess);
  }
}

std::uint64_t Zipf::at(std::uint64_t record) const {
  const std::uint64_t share = draw_below(key_, record, cells_.back().end_share);
  const auto cell =
      std::upper_bound(cells_.begin(), cells_.end(), share,
                       [](std::uint64_t value, const Cell& one) { return value < one.end_share; });
  const std::uint64_t end = cell + 1 == cells_.end() ? n_ : (cell + 1)->first;
  const std::uint64_t width = end - cell->first;
  if (width == 1) return cell->first;
  const std::uint64_t begin_share = (cell - 1)->end_share;
  return cell->first + static_cast<std::uint64_t>(Wide{share - begin_share} * width /
                                                  (cell->end_share - begin_share));
}

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
