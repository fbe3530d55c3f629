#pragma once

#include <optional>

#include "courses/item_facts.h"

namespace korvex {

// One field of the records of a whole run: an item's values, stretched by the repeats that it takes
// part in.
struct FieldFacts {
  std::optional<ItemFacts> values;  // nothing: there is no formula
  std::uint64_t frame_bytes = 0;    // quotation marks and comma

  // Repeats. Each value stands for `hold` records and the item goes through its values `rounds`
  // times for each value of the next outer level, until all repeats are over.
  bool is_repeated = false;
  RepeatLevel level{};
  Steps hold = 1;
  Steps rounds = 1;
  Steps repeats_end = 0;  // records; after them it goes on like any other item

  // The bytes of the field in so many records.
  std::optional<ByteCount> bytes(Steps records) const;
};

}  // namespace korvex
