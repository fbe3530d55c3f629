#include "run/item_generator.h"

#include "run/repeat_table.h"
#include "values/attributes.h"

namespace korvex {

namespace {

// Quotation marks and comma around a field's text.
constexpr std::size_t field_frame_size = 3;

}  // namespace

ItemGenerator::ItemGenerator(const ClFmtColInf& column, LayoutKind layout_kind, bool quotation)
    : column_(column),
      settings_(column.record),
      layout_kind_(layout_kind),
      is_initial_value_(column.record.generation_type == generation_type::initial_value),
      quoted_(quotation && !is_initial_value_ && korvex::is_quoted(column.record.attribute)),
      course_(ItemCourse::of(column, layout_kind)) {
  if (course_) {
    for (const auto& element : course_->elements()) cursors_.emplace_back(*element);
    room_ = course_->elements().size() * Course::max_text_size;
  } else {
    literal_ = std::make_unique<LiteralItem>(column_, layout_kind_);
    room_ = literal_->room();
  }
  room_ += field_frame_size + LineBlock::chunk_size;
}

void ItemGenerator::join_repeat(const ClRepeatData* next) {
  if (is_initial_value_) return;
  is_repeat_member_ = true;
  choose_mode();
  next_entry_ = next;
}

void ItemGenerator::set_enumeration(std::shared_ptr<const ClEnumDataList> values) {
  enumeration_ = std::move(values);
  list_cursor_.emplace(*enumeration_);
  add_list_field();
}

void ItemGenerator::add_list_field() {
  ++list_fields_;
  choose_mode();
}

void ItemGenerator::choose_mode() {
  if (list_fields_ == 0) {
    mode_ = is_repeat_member_ ? AssemblyMode::repeat_member : AssemblyMode::plain;
  } else if (list_fields_ == 1) {
    mode_ = is_repeat_member_ ? AssemblyMode::enumeration_repeat_member : AssemblyMode::enumeration;
  } else {
    mode_ = AssemblyMode::plain;
  }
}

void ItemGenerator::clear_wrapped() {
  wrapped_ = false;
  if (list_cursor_) list_cursor_->rewind();
}

ErrorCode ItemGenerator::append_other(LineBlock& line, const RunState& run) {
  switch (mode_) {
    case AssemblyMode::enumeration:
      return append_next_enumeration(line);
    case AssemblyMode::repeat_member:
      if (!run.repeats_finished) return append_repeated(line, run);
      if (repeats_from_start()) return append_plain(line);
      break;
    case AssemblyMode::enumeration_repeat_member:
      if (!run.repeats_finished) return append_repeated_enumeration(line, run);
      if (repeats_from_start()) return append_next_enumeration(line);
      break;
    case AssemblyMode::plain:
      return append_plain(line);
  }
  append_empty(line);
  return error::none;
}

// Writes the text of the present step and takes the next.
ErrorCode ItemGenerator::write_text(char*& out, bool& ended) {
  if (literal_ != nullptr) return literal_->write(out, ended);
  if (is_empty_) return error::none;
  const std::size_t shown = course_->shown_at(step_);
  for (std::size_t i = 0; i < shown; ++i) out = cursors_[i].write(out);
  if (take_step()) [[unlikely]]
    ended = true;
  return error::none;
}

ErrorCode ItemGenerator::append_plain(LineBlock& line) {
  bool ended = false;
  char* out = open_field(line);
  const ErrorCode result = write_text(out, ended);
  if (result != error::none) [[unlikely]]
    return result;
  line.move_cursor(close_field(out));
  if (ended) [[unlikely]]
    end_cycle();
  return error::none;
}

void ItemGenerator::end_cycle() {
  if (repeats_from_start()) {
    restart();
  } else if (literal_ != nullptr) {
    literal_->switch_off();
  } else {
    is_empty_ = true;
  }
}

void ItemGenerator::restart() {
  if (literal_ != nullptr) {
    literal_->restart();
  } else {
    place(0);
  }
}

void ItemGenerator::place(Steps step) {
  step_ = step;
  for (CourseCursor& cursor : cursors_) cursor.seek(step);
}

// An outer member shows its value again until the next inner level has finished.
bool ItemGenerator::outer_waits(const RunState& run) const {
  return next_entry_ != nullptr && !run.first_record && !next_entry_->finished;
}

ErrorCode ItemGenerator::append_repeated(LineBlock& line, const RunState& run) {
  char* out = open_field(line);
  if (outer_waits(run)) {
    line.move_cursor(out);
    line.require(saved_text_.size());
    line.append(saved_text_);
    return error::none;
  }
  const char* begin = out;
  const ErrorCode result = write_text(out, wrapped_);
  if (result != error::none) return result;
  out = close_field(out);
  line.move_cursor(out);
  // The innermost member never shows a value again.
  if (next_entry_ != nullptr) saved_text_.assign(begin, static_cast<std::size_t>(out - begin));
  if (wrapped_) restart();
  return error::none;
}

ErrorCode ItemGenerator::append_next_enumeration(LineBlock& line) {
  if (list_cursor_->is_at_end()) {
    if (!repeats_from_start()) {
      append_empty(line);
      return error::none;
    }
    list_cursor_->rewind();
  }
  append_enumeration_value(line);
  return error::none;
}

ErrorCode ItemGenerator::append_repeated_enumeration(LineBlock& line, const RunState& run) {
  if (outer_waits(run) && list_cursor_->index() > 0) list_cursor_->back();
  // An innermost item of one value never lets this index be set back: past the list's end the item
  // does what it does there without repeats.
  if (list_cursor_->is_at_end()) return append_next_enumeration(line);
  append_enumeration_value(line);
  if (list_cursor_->is_at_end()) wrapped_ = true;
  return error::none;
}

// Writes the value at the cursor as a whole field and goes on to the next.
void ItemGenerator::append_enumeration_value(LineBlock& line) {
  line.require(list_cursor_->value().size());
  line.move_cursor(close_field(list_cursor_->write_next(open_field(line))));
}

void ItemGenerator::append_empty(LineBlock& line) const {
  line.move_cursor(close_field(open_field(line)));
}

char* ItemGenerator::open_field(LineBlock& line) const {
  line.require(room_);
  char* out = line.cursor();
  if (quoted_) *out++ = quotation_mark;
  return out;
}

}  // namespace korvex
