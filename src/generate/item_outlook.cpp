// The side of an item that foresees several records and writes them at once.

#include <algorithm>
#include <cstring>

#include "generate/item_generator.h"
#include "generate/repeat_table.h"

namespace korvex {

namespace {

constexpr FieldOutlook unforeseen = {};

}  // namespace

FieldOutlook ItemGenerator::outlook(const RunState& run) const {
  if (is_initial_value_) return {FieldForm::constant, FieldOutlook::no_end};
  if (is_repeat_member_) {
    if (!run.repeats_finished) return repeated_outlook(run);
    if (!repeats_from_start()) return {FieldForm::constant, FieldOutlook::no_end};
  }
  if (!list_cursor_) return counting_outlook();
  if (repeats_from_start()) return {FieldForm::listed, FieldOutlook::no_end};
  return list_cursor_->is_at_end() ? FieldOutlook{FieldForm::constant, FieldOutlook::no_end}
                                   : FieldOutlook{FieldForm::listed, list_cursor_->left()};
}

FieldOutlook ItemGenerator::counting_outlook() const {
  if (shows_nothing()) return {FieldForm::constant, FieldOutlook::no_end};
  return {FieldForm::counting, counts_on_without_end() ? FieldOutlook::no_end : run_left()};
}

// As long as the innermost item does not wrap, all others wait, and no counter turns.
FieldOutlook ItemGenerator::repeated_outlook(const RunState& run) const {
  if (run.first_record) return unforeseen;
  if (next_entry_ == nullptr) {
    if (!list_cursor_) return {FieldForm::counting, run_left()};
    return {FieldForm::listed, list_cursor_->left() - 1};
  }
  const bool has_value = !list_cursor_ || list_cursor_->index() > 0;
  return outer_waits(run) && has_value ? FieldOutlook{FieldForm::constant, FieldOutlook::no_end}
                                       : unforeseen;
}

// No element has a text left: the item has been emptied, or it never had values.
bool ItemGenerator::shows_nothing() const {
  return std::all_of(elements_.begin(), elements_.end(),
                     [](const auto& element) { return element->is_off(); });
}

// An item that empties at its end, or that a step may end in the middle of its field, is foreseen
// no further than its elements' runs. Nor is one whose texts differ in size, or come back from
// being empty.
bool ItemGenerator::counts_on_without_end() const {
  if (!repeats_from_start()) return false;
  for (const auto& element : elements_) {
    const bool is_last = element == elements_.back();
    if (element->is_off() || !element->keeps_size()) return false;
    if (!is_last && !element->never_cuts()) return false;
  }
  return true;
}

std::int64_t ItemGenerator::run_left() const {
  std::int64_t steps = FieldOutlook::no_end;
  for (const auto& element : elements_) {
    if (!element->is_off()) steps = std::min(steps, element->run_left());
  }
  return steps;
}

// Empty, or what a member of the repeats has shown last.
void ItemGenerator::append_constant(std::string& line, const RunState& run) const {
  const bool waits = is_repeat_member_ && !run.repeats_finished;
  line += opening();
  if (waits && !list_cursor_) {
    line += saved_text_;  // with its closing
    return;
  }
  if (waits) {
    EnumCursor shown = *list_cursor_;
    shown.back();
    line += shown.value();
  }
  line += closing();
}

std::size_t ItemGenerator::size(FieldForm form) const {
  if (form == FieldForm::listed) return enumeration_->largest();
  std::size_t size = 0;
  for (const auto& element : elements_) size += element->text().size();
  return size;
}

void ItemGenerator::write_counting(FieldPlaces places, std::int64_t count,
                                   std::string_view closing) {
  if (field_.size() < room_ + closing.size()) field_.resize(room_ + closing.size());
  while (count > 0) {
    // Behind the last step of a run the value stands for one line more.
    const std::int64_t run = run_left();
    const std::int64_t lines = count <= run ? count : run + 1;
    TurningTail first_tail;
    more_tails_.clear();
    char* end = field_.data();
    for (const auto& element : elements_) {
      if (element->is_off()) continue;
      end = element->write(end);
      if (element->wheel_step() == 0 || lines == 1) continue;
      const auto size = static_cast<std::size_t>(end - field_.data());
      const TurningTail tail = {element->wheel_place(), element->wheel_step(), element->tail_size(),
                                size - element->tail_size()};
      if (first_tail.size == 0) {
        first_tail = tail;
      } else {
        more_tails_.push_back(tail);
      }
    }
    copy_short(end, closing.data(), closing.size());
    end += closing.size();

    const std::string_view field(field_.data(), static_cast<std::size_t>(end - field_.data()));
    write_fields(places, lines, field, first_tail);
    for (const TurningTail& tail : more_tails_) write_tails(places, lines, tail);
    places.lines += lines;
    count -= lines;

    const bool steps_beyond = lines > run;
    const std::int64_t steps = steps_beyond ? run : lines;
    for (const auto& element : elements_) {
      if (steps > 0 && !element->is_off()) element->skip(steps);
    }
    if (steps_beyond) step_beyond_run();
  }
}

void ItemGenerator::write_values(FieldPlaces places, std::int64_t count, std::string_view closing) {
  EnumCursor& cursor = *list_cursor_;
  while (count > 0) {
    if (cursor.is_at_end()) cursor.rewind();
    const std::int64_t lines = std::min<std::int64_t>(count, cursor.left());
    write_texts(places, lines, cursor.value(), closing);
    cursor.skip(lines);
    places.lines += lines;
    count -= lines;
  }
}

// Takes the step that at least one of the elements' runs does not cover.
void ItemGenerator::step_beyond_run() {
  pass_.date_overflow = false;
  bool ended = false;
  for (const auto& element : elements_) {
    if (element->is_off()) continue;
    const StepOutcome outcome = element->advance(pass_);
    if (outcome == StepOutcome::going) continue;
    ended = true;
    if (outcome == StepOutcome::cut) break;
  }
  if (ended) end_cycle();
}

}  // namespace korvex
