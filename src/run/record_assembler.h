#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "courses/line_block.h"
#include "run/item_generator.h"
#include "run/repeat_table.h"

namespace korvex {

// Assembles one record after the other, taking each through all items: whatever the items do.
class RecordAssembler {
 public:
  // Adds the next field of a record. An item that is in several fields takes one step for each
  // of them.
  void add_field(ItemGenerator& item) {
    fields_.push_back(&item);
    item.add_field();
  }

  // The repeats that turn after every record until they have finished. Comes after all fields.
  void set_repeats(RepeatTable& repeats);

  // Appends the fields of the next record, or answers the code that fails the run.
  ErrorCode assemble(LineBlock& line);

  // The same; `ends` receives where each field ends, its comma included, from the line's begin.
  ErrorCode assemble(LineBlock& line, std::vector<std::size_t>& ends);

  // Goes to a record, counted from 0, as if all records before it had been made. Records may be
  // asked for in any order. When the process is asked to end in the meantime, this stops early, and
  // is_lost() is true.
  void seek(Steps record);

  // Whether seek() takes the same time for every record. Else an item without a course goes through
  // its first two cycles once, as far as needed, and at each seek from a kept state to its place in
  // a cycle.
  bool seeks_directly() const {
    return std::all_of(fields_.begin(), fields_.end(),
                       [](const ItemGenerator* item) { return item->seeks_directly(); });
  }

  // Whether seek() was interrupted: the next records are wrong until another seek().
  bool is_lost() const { return is_lost_; }

  // Whether RepeatTable::turn_evenly() has answered so, or nothing repeats.
  bool repeats_turn_evenly() const { return repeats_ == nullptr || turns_evenly_; }

  const std::vector<ItemGenerator*>& fields() const { return fields_; }
  const RunState& run() const { return run_; }

 private:
  void finish_record();

  std::vector<ItemGenerator*> fields_;
  RepeatTable* repeats_ = nullptr;
  bool turns_evenly_ = false;
  bool is_lost_ = false;
  RunState run_;
};

}  // namespace korvex
