#include "host/ways/group_shape.h"

#include <algorithm>
#include <cassert>

#include "host/ways/numbers.h"
#include "host/ways/zipf.h"

namespace korvex::ways {
namespace {

using Sizes = std::vector<std::uint64_t>;

constexpr unsigned weight_bits = 40;

// The i-th of `groups` has the part of `extra` that the i-th odd number has of their sum, which is
// groups^2: from nearly 0 up to nearly twice the mean, in equal steps.
Sizes spread_evenly(std::uint64_t groups, Wide extra) {
  Sizes sizes;
  for (std::uint64_t i = 0; i < groups; ++i) {
    const Wide end = extra * ((i + 1) * (i + 1)) / (groups * groups);
    const Wide begin = extra * (i * i) / (groups * groups);
    sizes.push_back(static_cast<std::uint64_t>(end - begin));
  }
  return sizes;
}

// Above the middle, what the groups lack to `width` is spread in place of what they have.
Sizes spread_even(std::uint64_t groups, Wide extra, std::uint64_t width) {
  const Wide room = Wide{groups} * width;
  if (2 * extra <= room) return spread_evenly(groups, extra);
  Sizes sizes = spread_evenly(groups, room - extra);
  for (std::uint64_t& size : sizes) size = width - size;
  return sizes;
}

// From the largest down: who would have more than `width` has just that, and the others share what
// is left in the proportion of their weights.
Sizes spread_by_weights(const Sizes& weights, Wide extra, std::uint64_t width) {
  Wide weight_left = 0;
  for (const std::uint64_t weight : weights) weight_left += weight;
  Sizes sizes;
  std::size_t i = 0;
  for (; i < weights.size() && extra * weights[i] > Wide{width} * weight_left; ++i) {
    sizes.push_back(width);
    extra -= width;
    weight_left -= weights[i];
  }
  Wide weight_before = 0;
  for (; i < weights.size(); ++i) {
    const Wide begin = extra * weight_before / weight_left;
    weight_before += weights[i];
    sizes.push_back(static_cast<std::uint64_t>(extra * weight_before / weight_left - begin));
  }
  return sizes;
}

// The weights as they are by rank, and ever flatter with a larger bend: of the weight 1 / r, that
// is 1 / (r + bend), in parts of the first one.
class BentWeights {
 public:
  explicit BentWeights(const Sizes& weights) {
    for (const std::uint64_t weight : weights) inverses_.push_back((Wide{1} << 80) / weight);
  }

  Sizes at(Wide bend) const {
    Sizes weights;
    for (const Wide inverse : inverses_) {
      const Wide part = ((inverses_.front() + bend) << weight_bits) / (inverse + bend);
      weights.push_back(std::max<std::uint64_t>(1, static_cast<std::uint64_t>(part)));
    }
    return weights;
  }

 private:
  std::vector<Wide> inverses_;
};

// Whether the first one's part is no more than `width`.
bool is_within(const Sizes& weights, Wide extra, std::uint64_t width) {
  Wide sum = 0;
  for (const std::uint64_t weight : weights) sum += weight;
  return extra * weights.front() <= Wide{width} * sum;
}

// Where the largest groups would have more than `width`, all weights are bent as far as is needed
// for the first one: so that the sizes fall from the bound on, rather than stand there in a row.
Sizes spread_by_rank(Skew skew, std::uint64_t groups, Wide extra, std::uint64_t width) {
  // Never 0, so that a share of them can be taken; and small enough to be multiplied.
  constexpr unsigned unused_bits = power_bits - weight_bits;
  constexpr unsigned most_bend_bits = 86;
  Sizes weights;
  for (std::uint64_t rank = 1; rank <= groups; ++rank) {
    weights.push_back((negative_power(rank, skew.exponent()) >> unused_bits) + 1);
  }
  if (is_within(weights, extra, width)) return spread_by_weights(weights, extra, width);
  const BentWeights bent(weights);
  Wide bend = 0;
  // The bits of the bend from its first one on, as many as make a difference.
  unsigned bit = 0;
  while (bit < most_bend_bits && !is_within(bent.at(Wide{1} << bit), extra, width)) ++bit;
  constexpr unsigned exact_bits = 12;
  const unsigned last_bit = bit > exact_bits ? bit - exact_bits : 0;
  while (bit > last_bit) {
    --bit;
    const Wide further = bend + (Wide{1} << bit);
    if (!is_within(bent.at(further), extra, width)) bend = further;
  }
  return spread_by_weights(bent.at(bend + (Wide{1} << last_bit)), extra, width);
}

}  // namespace

std::vector<std::uint64_t> spread_extra(Shape shape, Skew skew, std::uint64_t groups,
                                        std::uint64_t extra, std::uint64_t width) {
  assert(extra <= Wide{groups} * width);
  switch (shape) {
    case Shape::constant:
      return spread_by_weights(Sizes(groups, 1), extra, width);
    case Shape::even:
      return spread_even(groups, extra, width);
    case Shape::zipf:
      break;
  }
  return spread_by_rank(skew, groups, extra, width);
}

}  // namespace korvex::ways
