#pragma once

#include <cstdint>
#include <vector>

#include "generate/item_generator.h"
#include "generate/line_block.h"

namespace korvex {

// Assembles the lines of a data file, one after the other.
class RecordAssembler {
 public:
  virtual ~RecordAssembler() = default;

  // Appends the fields of the next record. 0, or the code that fails the run.
  virtual std::int32_t assemble(LineBlock& line) = 0;
};

// Takes one record after the other through all items.
class SequentialAssembler : public RecordAssembler {
 public:
  // Adds the next field of a record. An item that stands in several fields takes one step for each
  // of them.
  void add_field(ItemGenerator& item) { fields_.push_back(&item); }

  std::int32_t assemble(LineBlock& line) override;

  // What the fields see; the repeats change it between records.
  RunState& run() { return run_; }

 private:
  std::vector<ItemGenerator*> fields_;
  RunState run_;
};

}  // namespace korvex
