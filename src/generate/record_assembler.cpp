#include "generate/record_assembler.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace korvex {

namespace {

// A shorter stretch costs more to prepare than it saves.
constexpr std::int64_t shortest_stretch = 3;

}  // namespace

std::int32_t SequentialAssembler::assemble(LineBlock& line) {
  if (stretch_left_ == 0) return assemble_items(line);
  write_turned(line);
  if (--stretch_left_ == 0) end_stretch();
  return 0;
}

std::int32_t SequentialAssembler::assemble_items(LineBlock& line) {
  for (ItemGenerator* item : fields_) {
    const std::int32_t result = item->append(line, run_);
    if (result != 0) return result;
  }
  run_.first_record = false;
  begin_stretch();
  return 0;
}

// Asked once: an item that repeats, takes its values from a list or stands in several fields rules
// stretches out for good.
void SequentialAssembler::make_pattern_room() {
  std::size_t room = 0;
  for (const ItemGenerator* item : fields_) {
    may_stretch_ = may_stretch_ && item->may_be_steady();
    room += item->room();
  }
  if (may_stretch_) pattern_.resize(room);
}

void SequentialAssembler::begin_stretch() {
  if (!may_stretch_) return;
  if (pattern_.empty()) {
    make_pattern_room();
    if (!may_stretch_) return;
  }
  std::int64_t steady = std::numeric_limits<std::int64_t>::max();
  for (const ItemGenerator* item : fields_) {
    steady = std::min(steady, item->steady_steps());
    if (steady < shortest_stretch) return;
  }
  stretch_left_ = stretch_size_ = steady;
  turning_.clear();
  char* const begin = pattern_.data();
  char* end = begin;
  for (const ItemGenerator* item : fields_) {
    end = item->write_pattern(end, [&](const ElementGenerator& element, const char* text_end) {
      const auto offset = static_cast<std::size_t>(text_end - begin) - ElementGenerator::tail_size;
      turning_.push_back({element.wheel_place(), element.wheel_step(), offset});
    });
  }
  pattern_size_ = static_cast<std::size_t>(end - begin);
}

void SequentialAssembler::write_turned(LineBlock& line) {
  line.require(pattern_size_);
  char* out = line.cursor();
  std::memcpy(out, pattern_.data(), pattern_size_);
  for (Turning& turning : turning_) {
    std::memcpy(out + turning.offset, turning.wheel_place, ElementGenerator::tail_size);
    turning.wheel_place += turning.wheel_step;
  }
  line.move_cursor(out + pattern_size_);
}

void SequentialAssembler::end_stretch() {
  for (ItemGenerator* item : fields_) item->skip(stretch_size_);
}

}  // namespace korvex
