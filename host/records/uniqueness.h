#pragma once

#include <vector>

#include "run/field_facts.h"

namespace korvex::host {

// For how long the records of a run differ in a set of fields.
struct Uniqueness {
  // So many records from the first on are all different, for certain.
  std::uint64_t different = 1;
  // Among so many records and one more two are the same, for certain. Equal to the other where the
  // answer is exact; endless where nothing is known.
  std::uint64_t repeated = endless;
};

// The repeated fields of a run in ascending level order.
std::vector<const FieldFacts*> repeated_fields(const std::vector<FieldFacts>& all);

// `all`: every field of the run, in the set or not.
Uniqueness uniqueness_of(const std::vector<const FieldFacts*>& set,
                         const std::vector<FieldFacts>& all);

}  // namespace korvex::host
