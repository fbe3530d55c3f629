#include "run/record_assembler.h"

#include "platform/interruption.h"

namespace korvex {

void RecordAssembler::set_repeats(RepeatTable& repeats) {
  repeats_ = &repeats;
  turns_evenly_ = repeats.turn_evenly();
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
    if (!item->turns_with_repeats()) item->seek_plain(record);
  }
  if (repeats_ != nullptr) run_.repeats_finished = repeats_->seek(record);
  is_lost_ = platform::is_interrupted() && !seeks_directly();
}

}  // namespace korvex
