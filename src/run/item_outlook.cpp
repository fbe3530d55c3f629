// The side of an item that predicts several records and writes them at once.

#include <algorithm>
#include <cstring>

#include "run/item_generator.h"
#include "run/repeat_table.h"

namespace korvex {

namespace {

constexpr FieldOutlook unpredictable = {};

std::int64_t as_records(Steps steps) {
  return static_cast<std::int64_t>(std::min(steps, static_cast<Steps>(FieldOutlook::no_end)));
}

}  // namespace

FieldOutlook ItemGenerator::outlook(const RunState& run) const {
  if (is_initial_value_) return {FieldForm::constant, FieldOutlook::no_end};
  if (is_repeat_member_) {
    if (!run.repeats_finished) return repeated_outlook(run);
    if (!repeats_from_start()) return {FieldForm::constant, FieldOutlook::no_end};
  }
  if (!list_cursor_) return counting_outlook();
  if (repeats_from_start()) return {FieldForm::listed, FieldOutlook::no_end};
  return list_cursor_->is_at_end()
             ? FieldOutlook{FieldForm::constant, FieldOutlook::no_end}
             : FieldOutlook{FieldForm::listed, as_records(list_cursor_->left())};
}

FieldOutlook ItemGenerator::counting_outlook() const {
  constexpr FieldOutlook constant = {FieldForm::constant, FieldOutlook::no_end};
  if (literal_ != nullptr) return literal_->shows_nothing() ? constant : unpredictable;
  if (cursors_.empty() || is_empty_) return constant;
  return {FieldForm::counting, as_records(records_of_full_size())};
}

// The last record of a cycle may be shorter; so is what comes after the only cycle.
Steps ItemGenerator::records_of_full_size() const {
  if (course_->end() == endless || (repeats_from_start() && !course_->is_cut_at_end())) {
    return endless;
  }
  return course_->end() - step_ - (course_->is_cut_at_end() ? 1 : 0);
}

// As long as the innermost item does not wrap, all others wait, and no counter turns.
FieldOutlook ItemGenerator::repeated_outlook(const RunState& run) const {
  if (run.first_record) return unpredictable;
  if (next_entry_ == nullptr) {
    if (literal_ != nullptr) return unpredictable;
    if (!list_cursor_) {
      const Steps end = course_->end();
      return {FieldForm::counting, as_records(end == endless ? endless : end - 1 - step_)};
    }
    return {FieldForm::listed, as_records(list_cursor_->left()) - 1};
  }
  const bool has_value = !list_cursor_ || list_cursor_->index() > 0;
  return outer_waits(run) && has_value ? FieldOutlook{FieldForm::constant, FieldOutlook::no_end}
                                       : unpredictable;
}

// Steps that need no course to be asked, and do not end the cycle.
std::int64_t ItemGenerator::run_left() const {
  std::int64_t steps = as_records(course_->end() - 1 - step_);
  for (const CourseCursor& cursor : cursors_) steps = std::min(steps, cursor.run_left());
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
  return form == FieldForm::listed ? enumeration_->largest() : course_->size();
}

void ItemGenerator::write_counting(FieldPlaces places, std::int64_t count,
                                   std::string_view closing) {
  if (field_.size() < room_ + closing.size()) field_.resize(room_ + closing.size());
  while (count > 0) {
    // After the last step of a run the value stands for one line more.
    const std::int64_t run = run_left();
    const std::int64_t lines = count <= run ? count : run + 1;
    TurningTail first_tail;
    more_tails_.clear();
    char* end = field_.data();
    for (const CourseCursor& cursor : cursors_) {
      end = cursor.write(end);
      if (cursor.wheel_step() == 0 || lines == 1) continue;
      const auto size = static_cast<std::size_t>(end - field_.data());
      const TurningTail tail = {cursor.wheel_place(), cursor.wheel_step(), cursor.tail_size(),
                                size - cursor.tail_size()};
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
    if (steps > 0) {
      for (CourseCursor& cursor : cursors_) cursor.skip(steps);
      step_ += static_cast<Steps>(steps);
    }
    if (steps_beyond && take_step()) end_cycle();
  }
}

void ItemGenerator::write_values(FieldPlaces places, std::int64_t count, std::string_view closing) {
  EnumCursor& cursor = *list_cursor_;
  while (count > 0) {
    if (cursor.is_at_end()) cursor.rewind();
    const std::int64_t lines = std::min(count, as_records(cursor.left()));
    write_texts(places, lines, cursor.value(), closing);
    cursor.skip(static_cast<std::size_t>(lines));
    places.lines += lines;
    count -= lines;
  }
}

}  // namespace korvex
