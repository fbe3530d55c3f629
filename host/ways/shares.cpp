#include "host/ways/shares.h"

#include <algorithm>
#include <cassert>
#include <numeric>

namespace korvex::ways {
namespace {

constexpr std::uint64_t least_block = 1024;

std::uint64_t block_size(const Proportions& proportions) {
  const std::uint64_t parts = proportions.parts();
  return parts * (least_block / parts + (least_block % parts != 0));
}

// Of a place in a block whose categories have these ends.
std::size_t category_at(const std::vector<std::uint64_t>& ends, std::uint64_t place) {
  return static_cast<std::size_t>(std::upper_bound(ends.begin(), ends.end(), place) - ends.begin());
}

}  // namespace

Result<Proportions> Proportions::of_weights(std::span<const Fraction> weights) {
  const Refusal too_exact{"the weights have no common denominator that is small enough"};
  Wide denominator = 1;
  for (const Fraction& weight : weights) {
    const auto so_far = static_cast<std::uint64_t>(denominator);
    denominator = Wide{so_far} / std::gcd(so_far, weight.denominator) * weight.denominator;
    if (denominator > Fraction::most) return too_exact;
  }
  std::uint64_t divisor = 0;
  std::vector<std::uint64_t> bounds;
  Wide sum = 0;
  for (const Fraction& weight : weights) {
    const Wide parts = Wide{weight.numerator} * (denominator / weight.denominator);
    sum += parts;
    if (sum > Fraction::most) return too_exact;
    divisor = std::gcd(divisor, static_cast<std::uint64_t>(parts));
    bounds.push_back(static_cast<std::uint64_t>(sum));
  }
  if (sum == 0) return Refusal{"none of the weights is above 0"};
  for (std::uint64_t& bound : bounds) bound /= divisor;
  return Proportions(std::move(bounds));
}

Proportions Proportions::of_share(Fraction share) {
  assert(share.numerator <= share.denominator);
  return Proportions({share.numerator, share.denominator});
}

// The nearest place to each bound; the last one is the size of the block.
ExactShares::Ends ExactShares::ends(const Proportions& proportions, std::uint64_t size) {
  const Wide parts = proportions.parts();
  Ends ends;
  for (const std::uint64_t bound : proportions.bounds()) {
    ends.push_back(static_cast<std::uint64_t>((2 * Wide{bound} * size + parts) / (2 * parts)));
  }
  return ends;
}

ExactShares::ExactShares(Key key, const Proportions& proportions, std::uint64_t records)
    : orders_(key),
      blocks_(block_size(proportions)),
      whole_blocks_(records / blocks_.period()),
      whole_(ends(proportions, blocks_.period())),
      last_(ends(proportions, records % blocks_.period())) {
  assert(records <= most_records);
}

const Permutation& ExactShares::order(const Ends& ends) {
  return orders_.of(ends.back(), {.round = blocks_.latest()});
}

std::size_t ExactShares::category_of(std::uint64_t record) {
  const std::uint64_t place = blocks_.place_of(record);
  const Ends& ends = ends_of_latest();
  return category_at(ends, order(ends).at(place));
}

void ExactShares::take(std::span<std::uint64_t> records) {
  while (!records.empty()) {
    const std::span<std::uint64_t> places = records.first(blocks_.take_places(records));
    const Ends& ends = ends_of_latest();
    order(ends).take(places);
    for (std::uint64_t& place : places) place = category_at(ends, place);
    records = records.subspan(places.size());
  }
}

std::uint64_t ExactShares::count(std::size_t category) const {
  const auto size = [category](const Ends& ends) {
    return ends[category] - (category == 0 ? 0 : ends[category - 1]);
  };
  return whole_blocks_ * size(whole_) + size(last_);
}

}  // namespace korvex::ways
