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

void ItemGenerator::skip(Steps records) {
  const Steps values = product(records, static_cast<Steps>(fields_));
  if (takes_values_from_list()) {
    const auto count = static_cast<Steps>(enumeration_->count());
    const Steps index = sum(values, static_cast<Steps>(list_cursor_->index()));
    list_cursor_->seek(
        static_cast<std::int32_t>(repeats_from_start() ? index % count : std::min(index, count)));
  } else if (literal_ != nullptr) {
    skip_literal(values);
  } else if (!is_empty_) {
    const Steps step = sum(step_, values);
    is_empty_ = !repeats_from_start() && step >= course_->end();
    place(step % course_->end());
  }
}

// Goes on to the end of the cycle and through the next one; all that follow are like that.
void ItemGenerator::skip_literal(Steps values) {
  std::string text(literal_->room(), '\0');
  Steps cycle_begin = 0;
  int cycles = 0;
  for (Steps done = 0; done < values && !literal_->shows_nothing(); ++done) {
    char* out = text.data();
    bool ended = false;
    if (literal_->write(out, ended) != 0) return;  // fails the record that comes to it
    if (!ended) continue;
    end_cycle();
    if (++cycles == 2) {
      const Steps length = done + 1 - cycle_begin;
      done += (values - done - 1) / length * length;
    }
    cycle_begin = done + 1;
  }
}

void ItemGenerator::seek_member(Steps values, bool wrapped) {
  const Steps end = *cycle();
  wrapped_ = wrapped;
  is_empty_ = false;
  if (takes_values_from_list()) {
    list_cursor_->seek(static_cast<std::int32_t>(wrapped ? end : values % end));
    return;
  }
  saved_text_.clear();
  if (values > 0 && next_entry_ != nullptr) {
    const Steps last = (values - 1) % end;
    place(last);
    for (std::size_t i = 0; i < course_->shown_at(last); ++i) saved_text_ += cursors_[i].text();
    saved_text_ += closing();
  }
  place(values % end);
}

}  // namespace korvex
