#include "courses/literal_cycle.h"

#include <algorithm>
#include <string>

#include "platform/interruption.h"

namespace korvex {

Steps LiteralCycle::length(Steps most) {
  walk(most);
  return has_ended_ && walked_ <= most ? walked_ : endless;
}

LiteralItem LiteralCycle::after(Steps values) {
  walk(values);
  const Steps reached = std::min(values, walked_);
  LiteralItem item = marks_[static_cast<std::size_t>(reached / mark_every_)];
  std::string text(item.room(), '\0');
  bool ended = false;
  for (Steps left = reached % mark_every_; left > 0 && !platform::is_interrupted(); --left) {
    char* out = text.data();
    item.write(out, ended);
  }
  return item;
}

void LiteralCycle::walk(Steps values) {
  std::string text(front_.room(), '\0');
  while (walked_ < values && !has_ended_ && !is_stuck_ && !platform::is_interrupted()) {
    char* out = text.data();
    is_stuck_ = front_.shows_nothing() || front_.write(out, has_ended_) != error::none;
    if (!is_stuck_ && ++walked_ % mark_every_ == 0) mark();
  }
}

void LiteralCycle::mark() {
  if (marks_.size() == most_marks) {
    for (std::size_t i = 1; i < most_marks / 2; ++i) marks_[i] = std::move(marks_[2 * i]);
    marks_.erase(marks_.begin() + most_marks / 2, marks_.end());
    mark_every_ *= 2;
  }
  marks_.push_back(front_);
}

}  // namespace korvex
