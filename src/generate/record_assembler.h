#pragma once

#include <cstdint>
#include <vector>

#include "generate/item_generator.h"
#include "generate/line_block.h"
#include "generate/repeat_table.h"

namespace korvex {

// Assembles one record after the other, taking each through all items: whatever the items do.
class RecordAssembler {
 public:
  // Adds the next field of a record. An item that stands in several fields takes one step for each
  // of them.
  void add_field(ItemGenerator& item) {
    fields_.push_back(&item);
    item.add_field();
  }

  // The repeats that turn after every record until they have finished.
  void set_repeats(RepeatTable& repeats) { repeats_ = &repeats; }

  // Appends the fields of the next record. 0, or the code that fails the run.
  std::int32_t assemble(LineBlock& line);

  const std::vector<ItemGenerator*>& fields() const { return fields_; }
  const RunState& run() const { return run_; }

 private:
  std::vector<ItemGenerator*> fields_;
  RepeatTable* repeats_ = nullptr;
  RunState run_;
};

}  // namespace korvex
