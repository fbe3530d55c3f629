// The side of an item that goes to any of its values.

#include "run/item_generator.h"

namespace korvex {

std::optional<Steps> ItemGenerator::cycle() const {
  if (fields_ != 1) return std::nullopt;
  if (takes_values_from_list()) return static_cast<Steps>(enumeration_->count());
  if (!course_) return std::nullopt;
  return course_->end();
}

ItemFacts ItemGenerator::facts() const {
  return takes_values_from_list() ? list_facts(*enumeration_, !repeats_from_start())
                                  : item_facts(column_, *course_);
}

void ItemGenerator::rewind() {
  wrapped_ = false;
  is_empty_ = false;
  saved_text_.clear();
  if (list_cursor_) list_cursor_->rewind();
  if (literal_ != nullptr) {
    literal_ = std::make_unique<LiteralItem>(column_, layout_kind_);
  } else {
    place(0);
  }
}

void ItemGenerator::seek_plain(Steps records) {
  rewind();
  skip(records, CycleKind::first);
}

void ItemGenerator::seek_finished(Steps records) {
  seek_member({CycleKind::later, 0, false});
  if (repeats_from_start()) skip(records, CycleKind::later);
}

// From the first value of a cycle on.
void ItemGenerator::skip(Steps records, CycleKind begun) {
  const Steps values = product(records, fields_);
  if (takes_values_from_list()) {
    const Steps count = enumeration_->count();
    list_cursor_->seek(repeats_from_start() ? values % count : std::min(values, count));
  } else if (literal_ != nullptr) {
    skip_literal(values, begun);
  } else {
    is_empty_ = !repeats_from_start() && values >= course_->end();
    place(values % course_->end());
  }
}

void ItemGenerator::skip_literal(Steps values, CycleKind begun) {
  LiteralCycles& cycles = literal_cycles();
  Steps length = cycles.of(begun).length(values);
  if (values < length) {
    *literal_ = cycles.of(begun).after(values);
  } else if (!repeats_from_start()) {
    literal_->switch_off();
  } else {
    if (begun == CycleKind::first) {
      values -= length;
      length = cycles.later.length(values);
    }
    *literal_ = cycles.later.after(values % length);
  }
}

LiteralCycles& ItemGenerator::literal_cycles() {
  if (literal_cycles_ == nullptr) {
    const LiteralItem first(column_, layout_kind_);
    LiteralItem later(first);
    later.restart();
    literal_cycles_.reset(new LiteralCycles{LiteralCycle(first), LiteralCycle(later)});
  }
  return *literal_cycles_;
}

CycleLengths ItemGenerator::cycle_lengths(Steps most) {
  if (!turns_with_repeats()) return {};
  if (takes_values_from_list()) {
    const Steps count = enumeration_->count();
    return {count, count};
  }
  // Once a cycle has ended in a record, the other fields of that record don't begin the next.
  const Steps fields = fields_;
  const auto records_of = [fields](Steps values) {
    return values == endless ? endless : values / fields + (values % fields != 0 ? 1 : 0);
  };
  if (course_) {
    const Steps records = records_of(course_->end());
    return {records, records};
  }
  CycleLengths found;
  found.first = records_of(literal_cycles().first.length(product(most, fields)));
  if (found.first < most) {
    found.later = records_of(literal_cycles().later.length(product(most - found.first, fields)));
  }
  return found;
}

void ItemGenerator::seek_member(const MemberPlace& wanted) {
  wrapped_ = wanted.wrapped;
  is_empty_ = false;
  saved_text_.clear();
  if (takes_values_from_list()) {
    seek_member_list(wanted);
  } else if (literal_ != nullptr) {
    seek_member_literal(wanted);
  } else {
    const Steps values = product(wanted.records, fields_);
    if (values > 0 && next_entry_ != nullptr) {
      const Steps last = values <= course_->end() ? values - 1 : 0;
      place(last);
      for (std::size_t i = 0; i < course_->shown_at(last); ++i) saved_text_ += cursors_[i].text();
      saved_text_ += closing();
    }
    place(wrapped_ ? 0 : values);
  }
}

// A list whose end no counter takes notice of goes on there as it does without repeats.
void ItemGenerator::seek_member_list(const MemberPlace& wanted) {
  const Steps count = enumeration_->count();
  Steps index = wanted.records;
  if (index > count) index = repeats_from_start() ? (index - 1) % count + 1 : count;
  list_cursor_->seek(index);
}

void ItemGenerator::seek_member_literal(const MemberPlace& wanted) {
  LiteralCycles& cycles = literal_cycles();
  LiteralCycle& cycle = cycles.of(wanted.cycle);
  const Steps values = product(wanted.records, fields_);
  const Steps length = cycle.length(values);
  if (values == 0) {
    *literal_ = cycle.after(0);
    return;
  }
  // Past its end the item shows its first value over and over.
  *literal_ = values <= length ? cycle.after(values - 1) : cycles.later.after(0);
  saved_text_.resize(literal_->room());
  char* out = saved_text_.data();
  bool ended = values > length;
  literal_->write(out, ended);
  if (ended) literal_->restart();
  saved_text_.resize(static_cast<std::size_t>(out - saved_text_.data()));
  saved_text_ += closing();
}

}  // namespace korvex
