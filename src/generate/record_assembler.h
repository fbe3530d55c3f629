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
//
// While every element of every item is inside a run, records differ in nothing but the characters
// that the runs turn: such a stretch is written from one line, copied and turned. The record in
// which a run ends goes through the items again.
class SequentialAssembler : public RecordAssembler {
 public:
  // Adds the next field of a record. An item that stands in several fields takes one step for each
  // of them.
  void add_field(ItemGenerator& item) {
    fields_.push_back(&item);
    item.add_field();
  }

  std::int32_t assemble(LineBlock& line) override;

  // What the fields see; the repeats change it between records.
  RunState& run() { return run_; }

 private:
  // An element whose last characters turn, and where they stand in the line.
  struct Turning {
    const char* wheel_place;
    std::ptrdiff_t wheel_step;
    std::size_t offset;
  };

  std::int32_t assemble_items(LineBlock& line);
  void begin_stretch();
  void make_pattern_room();
  void write_turned(LineBlock& line);
  void end_stretch();

  std::vector<ItemGenerator*> fields_;
  RunState run_;

  bool may_stretch_ = true;
  std::int64_t stretch_left_ = 0;
  std::int64_t stretch_size_ = 0;
  std::vector<char> pattern_;
  std::size_t pattern_size_ = 0;
  std::vector<Turning> turning_;
};

}  // namespace korvex
