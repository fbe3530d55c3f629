#include "run/record_assembler.h"

namespace korvex {

void RecordAssembler::set_repeats(RepeatTable& repeats) {
  repeats_ = &repeats;
  is_nested_ = repeats.nest();
}

ErrorCode RecordAssembler::assemble(LineBlock& line) {
  for (ItemGenerator* item : fields_) {
    const ErrorCode result = item->append(line, run_);
    if (result != error::none) return result;
  }
  finish_record();
  return error::none;
}

ErrorCode RecordAssembler::assemble(LineBlock& line, std::vector<std::size_t>& ends) {
  ends.clear();
  for (ItemGenerator* item : fields_) {
    const ErrorCode result = item->append(line, run_);
    if (result != error::none) return result;
    ends.push_back(line.line_size());
  }
  finish_record();
  return error::none;
}

void RecordAssembler::finish_record() {
  run_.first_record = false;
  if (repeats_ != nullptr && !run_.repeats_finished) run_.repeats_finished = repeats_->advance();
}

void RecordAssembler::seek(Steps record) {
  run_ = {record == 0, false};
  for (ItemGenerator* item : fields_) {
    item->rewind();
    if (!item->is_repeat_member()) item->skip(record);
  }
  if (repeats_ == nullptr) return;
  repeats_->rewind();
  if (is_nested_) {
    run_.repeats_finished = repeats_->seek(record);
  } else {
    turn_repeats(record);
  }
}

void RecordAssembler::turn_repeats(Steps records) {
  LineBlock unused(0);
  run_.first_record = true;
  for (Steps done = 0; done < records; ++done) {
    if (run_.repeats_finished) {
      for (ItemGenerator* item : repeats_->items()) item->skip(records - done);
      return;
    }
    for (ItemGenerator* item : fields_) {
      // One that fails does so again in the record that comes to it.
      if (item->is_repeat_member() && item->append(unused, run_) != error::none) return;
    }
    unused.clear();
    finish_record();
  }
}

}  // namespace korvex
