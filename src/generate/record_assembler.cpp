#include "generate/record_assembler.h"

namespace korvex {

std::int32_t RecordAssembler::assemble(LineBlock& line) {
  for (ItemGenerator* item : fields_) {
    const std::int32_t result = item->append(line, run_);
    if (result != 0) return result;
  }
  run_.first_record = false;
  if (repeats_ != nullptr && !run_.repeats_finished) run_.repeats_finished = repeats_->advance();
  return 0;
}

}  // namespace korvex
