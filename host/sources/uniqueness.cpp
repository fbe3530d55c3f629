#include "host/sources/uniqueness.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/sources/saturating.h"

namespace korvex::sources {
namespace {

// Fields that share a way.
struct Followers {
  const Way* way;
  std::uint64_t combinations;  // of their values
  bool is_by_index;            // nothing but the index decides what they are
};

// There are no more than there are indices, and one for records without any.
std::uint64_t most_combinations(const Followers& followers) {
  if (!followers.is_by_index) return followers.combinations;
  const bool may_end = followers.way->records() != endless;
  return std::min(followers.combinations, sum(followers.way->indices(), may_end ? 1 : 0));
}

std::uint64_t most_combinations(std::span<const Field* const> fields) {
  std::vector<Followers> all;
  for (const Field* field : fields) {
    const auto found = std::find_if(all.begin(), all.end(), [&](const Followers& followers) {
      return followers.way == &field->way();
    });
    const std::uint64_t values = field->most_values();
    if (found == all.end()) {
      all.push_back({&field->way(), values, !field->has_emptiness()});
    } else {
      found->combinations = product(found->combinations, values);
      found->is_by_index = found->is_by_index && !field->has_emptiness();
    }
  }
  std::uint64_t combinations = 1;
  for (const Followers& followers : all) {
    combinations = product(combinations, most_combinations(followers));
  }
  return combinations;
}

}  // namespace

Uniqueness uniqueness_of(std::span<const Field* const> fields) {
  Knowledge knowledge;
  std::vector<Thing> known;
  for (const Field* field : fields) {
    field->tell(knowledge);
    known.push_back(field->thing());
  }
  Uniqueness uniqueness;
  uniqueness.different = std::max<std::uint64_t>(1, knowledge.records_where(known, the_record));
  uniqueness.repeated = std::max(uniqueness.different, most_combinations(fields));
  return uniqueness;
}

}  // namespace korvex::sources
