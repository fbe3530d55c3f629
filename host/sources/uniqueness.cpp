#include "host/sources/uniqueness.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace korvex::sources {
namespace {

// Fields that nothing but one way decides.
struct Followers {
  const Way* way;
  std::uint64_t combinations;  // of their values
};

std::uint64_t values_and_none(const Field& field) {
  return sum(field.text_facts().values.most, field.shape().never_empty ? 0 : 1);
}

// Whether two of all records are the same for certain, whatever their number.
bool comes_twice(std::span<const Field* const> fields) {
  if (fields.empty()) return false;
  const TextFacts& first = fields.front()->text_facts();
  if (fields.size() == 1 && first.least_empty > 1) return true;
  return first.follows != nullptr && first.follows->comes_twice() &&
         std::all_of(fields.begin(), fields.end(), [&](const Field* field) {
           return field->text_facts().follows == first.follows;
         });
}

std::optional<Cycle> common_cycle(std::span<const Field* const> fields) {
  Cycle common;
  for (const Field* field : fields) {
    const std::optional<Cycle>& cycle = field->text_facts().cycle;
    if (!cycle) return std::nullopt;
    common = common_cycle(common, *cycle);
  }
  return common;
}

}  // namespace

// Fields of one way have no more combinations than it has indices, and one for records without any.
std::uint64_t most_combinations(std::span<const Field* const> fields) {
  std::vector<Followers> all;
  std::uint64_t combinations = 1;
  for (const Field* field : fields) {
    const TextFacts& text_facts = field->text_facts();
    const std::uint64_t values = values_and_none(*field);
    const auto found = std::find_if(all.begin(), all.end(), [&](const Followers& followers) {
      return followers.way == text_facts.follows;
    });
    if (text_facts.follows == nullptr) {
      combinations = product(combinations, values);
    } else if (found == all.end()) {
      all.push_back({text_facts.follows, values});
    } else {
      found->combinations = product(found->combinations, values);
    }
  }
  for (const Followers& followers : all) {
    combinations = product(
        combinations, std::min(followers.combinations, sum(followers.way->indices().most,
                                                           followers.way->gives_all() ? 0 : 1)));
  }
  return combinations;
}

std::uint64_t different_values(std::span<const Field* const> fields) {
  Dependencies dependencies;
  std::vector<Thing> known;
  for (const Field* field : fields) {
    field->tell_of_values(dependencies);
    known.push_back(field->thing());
  }
  return dependencies.records_told_by(known);
}

Uniqueness uniqueness_of(std::span<const Field* const> fields, std::uint64_t records) {
  Dependencies dependencies;
  std::vector<Thing> known;
  for (const Field* field : fields) {
    field->tell(dependencies);
    known.push_back(field->thing());
  }
  Uniqueness uniqueness = {1, most_combinations(fields)};
  uniqueness.different = std::max(uniqueness.different, dependencies.records_told_by(known));
  if (const std::optional<Cycle> cycle = common_cycle(fields)) {
    uniqueness.repeated = std::min(uniqueness.repeated, cycle->length());
  }
  if (fields.size() == 1) {
    uniqueness.repeated = std::min(uniqueness.repeated, fields.front()->first_repeated());
  }
  if (comes_twice(fields)) uniqueness.repeated = std::min(uniqueness.repeated, records - 1);
  uniqueness.repeated = std::max(uniqueness.repeated, uniqueness.different);
  return uniqueness;
}

}  // namespace korvex::sources
