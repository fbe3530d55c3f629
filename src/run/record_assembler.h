#pragma once

#include <cstdint>
#include <vector>

#include "courses/line_block.h"
#include "run/item_generator.h"
#include "run/repeat_table.h"

namespace korvex {

// Assembles one record after the other, taking each through all items: whatever the items do.
class RecordAssembler {
 public:
  // Adds the next field of a record. An item that stands in several fields takes one step for each
  // of them.
  void add_field(ItemGenerator& item) {
    fields_.push_back(&item);
    item.add_field();
    all_have_courses_ &= item.has_course();
  }

  // The repeats that turn after every record until they have finished. Comes after all fields.
  void set_repeats(RepeatTable& repeats);

  // Appends the fields of the next record, or answers the code that fails the run.
  ErrorCode assemble(LineBlock& line);

  // The same; `ends` receives where each field ends, its comma included, from the line's begin.
  ErrorCode assemble(LineBlock& line, std::vector<std::size_t>& ends);

  // Goes to a record, counted from 0: what follows is what it would have been. Any order of records
  // will do.
  void seek(Steps record);

  // Whether seek() takes the same time for every record. Else it steps: repeats that have no closed
  // form turn record by record from the first on until they finish, and an item without a course
  // goes through its values up to the end of its second cycle.
  bool seeks_directly() const { return all_have_courses_ && repeats_turn_in_closed_form(); }
  bool repeats_turn_in_closed_form() const { return repeats_ == nullptr || is_nested_; }

  const std::vector<ItemGenerator*>& fields() const { return fields_; }
  const RunState& run() const { return run_; }

 private:
  void turn_repeats(Steps records);
  void finish_record();

  std::vector<ItemGenerator*> fields_;
  RepeatTable* repeats_ = nullptr;
  bool is_nested_ = false;
  bool all_have_courses_ = true;
  RunState run_;
};

}  // namespace korvex
