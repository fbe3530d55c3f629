#pragma once

#include "host/records/field_timeline.h"

namespace korvex::host {

// For how long the records of a run differ in a set of fields.
struct Uniqueness {
  // So many records from the first on are all different, for certain.
  std::uint64_t different = 1;
  // Among so many records and one more two are the same, for certain. Equal to the other where the
  // answer is exact; endless where nothing is known.
  std::uint64_t repeated = endless;
};

// `all_repeats`: every repeated field of the run in ascending level order, in the set or not.
Uniqueness uniqueness_of(const std::vector<const FieldTimeline*>& set,
                         const std::vector<FieldTimeline*>& all_repeats);

}  // namespace korvex::host
