#pragma once

#include "host/records/item_sequence.h"

namespace korvex::host {

// One field of the records of a whole run: an item's sequence, stretched by the repeats it takes
// part in.
struct FieldTimeline {
  std::optional<ItemSequence> sequence;  // nothing: can't be told in closed form
  std::uint64_t frame_bytes = 0;         // quotation marks and comma

  // Repeats. Each value stands for `hold` records and the item goes through its values `rounds`
  // times for each value of the next outer level, until all repeats are over.
  bool is_repeated = false;
  std::int32_t level = 0;
  std::uint64_t hold = 1;
  std::uint64_t rounds = 1;
  std::uint64_t repeats_end = 0;  // records; behind them it goes on like any other item

  // The bytes of the field in so many records.
  std::optional<std::uint64_t> bytes(std::uint64_t records) const;
};

// Stretches the fields of repeated items, which come in ascending level order. False when the
// repeats turn in a way that can't be told.
bool nest_repeats(const std::vector<FieldTimeline*>& repeated);

}  // namespace korvex::host
