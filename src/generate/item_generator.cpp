#include "generate/item_generator.h"

#include "format/error_codes.h"
#include "formatlang/attributes.h"
#include "generate/repeat_table.h"

namespace korvex {

namespace {

constexpr char quotation_mark = '"';

// Quotation marks and comma around a field's text.
constexpr std::size_t field_frame_size = 3;

}  // namespace

ItemGenerator::ItemGenerator(const ClFmtColInf& column, std::int32_t layout_kind, bool quotation)
    : settings_(column.record), quoted_(quotation && is_quoted(column.record.attribute)) {
  ItemContext context;
  context.layout_kind = layout_kind;
  context.lead_element = settings_.lead_element;
  context.item_digits = settings_.digits;
  context.item_decimals = settings_.decimals;
  context.increment = settings_.increment;
  for (const auto& element : column.elements) {
    elements_.push_back(make_element_generator(context, *element));
  }
}

void ItemGenerator::join_repeat(const ClRepeatData* next) {
  if (!is_repeat_member_) mode_ += assembly_mode::repeat_member;
  is_repeat_member_ = true;
  next_entry_ = next;
}

void ItemGenerator::set_enumeration(std::unique_ptr<ClEnumDataList> values) {
  enumeration_ = std::move(values);
  mode_ += assembly_mode::enumeration;
}

void ItemGenerator::clear_wrapped() {
  wrapped_ = false;
  enumeration_index_ = 0;
}

bool ItemGenerator::repeats_from_start() const {
  return settings_.exceeded_action == exceeded_action::repeat;
}

std::int32_t ItemGenerator::append(RecordLine& line, const RunState& run) {
  line.require(elements_.size() * ElementGenerator::max_text_size + field_frame_size);
  if (settings_.generation_type == generation_type::initial_value) {
    line.append(',');
    return 0;
  }
  if (quoted_) line.append(quotation_mark);
  return append_value(line, run);
}

std::int32_t ItemGenerator::append_value(RecordLine& line, const RunState& run) {
  switch (mode_) {
    case assembly_mode::enumeration:
      return append_next_enumeration(line);
    case assembly_mode::repeat_member:
      if (!run.repeats_finished) return append_repeated(line, run);
      if (repeats_from_start()) return append_plain(line);
      break;
    case assembly_mode::enumeration_repeat_member:
      if (!run.repeats_finished) return append_repeated_enumeration(line, run);
      if (repeats_from_start()) return append_next_enumeration(line);
      break;
    default:
      return append_plain(line);
  }
  close_field(line);
  return 0;
}

std::int32_t ItemGenerator::walk_elements(RecordLine& line, bool& ended) {
  ItemPass pass;
  for (const auto& element : elements_) {
    if (element->is_off()) continue;
    switch (element->produce(line, pass)) {
      case StepOutcome::going:
        break;
      case StepOutcome::ended:
        ended = true;
        break;
      case StepOutcome::cut:
        ended = true;
        return 0;
      case StepOutcome::bad_kind:
        return error::bad_attribute;
      case StepOutcome::bad_sub_kind:
        return error::signed_format_for_unsigned;
    }
  }
  return 0;
}

std::int32_t ItemGenerator::append_plain(RecordLine& line) {
  bool ended = false;
  const std::int32_t result = walk_elements(line, ended);
  if (result != 0) return result;
  close_field(line);
  if (ended) {
    if (repeats_from_start()) {
      restart_elements();
    } else {
      switch_off_elements();
    }
  }
  return 0;
}

// An outer member shows its value again until the next inner level has finished.
bool ItemGenerator::outer_waits(const RunState& run) const {
  return next_entry_ != nullptr && !run.first_record && !next_entry_->finished;
}

std::int32_t ItemGenerator::append_repeated(RecordLine& line, const RunState& run) {
  if (outer_waits(run)) {
    line.require(saved_text_.size());
    line.append(saved_text_);
    return 0;
  }
  const std::size_t begin = line.size();
  const std::int32_t result = walk_elements(line, wrapped_);
  if (result != 0) return result;
  close_field(line);
  if (next_entry_ != nullptr) saved_text_ = line.from(begin);
  if (wrapped_) restart_elements();
  return 0;
}

std::int32_t ItemGenerator::append_next_enumeration(RecordLine& line) {
  if (enumeration_index_ >= enumeration_->count()) {
    if (!repeats_from_start()) {
      close_field(line);
      return 0;
    }
    enumeration_index_ = 0;
  }
  append_enumeration_value(line);
  return 0;
}

std::int32_t ItemGenerator::append_repeated_enumeration(RecordLine& line, const RunState& run) {
  if (outer_waits(run) && enumeration_index_ > 0) --enumeration_index_;
  // An innermost item of one value never lets this index be set back: past the list's end the item
  // does what it does there without repeats.
  if (enumeration_index_ >= enumeration_->count()) return append_next_enumeration(line);
  append_enumeration_value(line);
  if (enumeration_index_ == enumeration_->count()) wrapped_ = true;
  return 0;
}

// Writes the value at the index as a whole field and goes on to the next.
void ItemGenerator::append_enumeration_value(RecordLine& line) {
  const ClEnumData value = enumeration_->value(enumeration_index_++);
  line.require(value.size() + field_frame_size);
  line.append(value);
  close_field(line);
}

void ItemGenerator::close_field(RecordLine& line) {
  if (quoted_) line.append(quotation_mark);
  line.append(',');
}

void ItemGenerator::restart_elements() {
  for (const auto& element : elements_) element->restart();
}

void ItemGenerator::switch_off_elements() {
  for (const auto& element : elements_) element->switch_off();
}

}  // namespace korvex
