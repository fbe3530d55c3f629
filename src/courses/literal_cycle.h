#pragma once

#include <vector>

#include "courses/literal_item.h"
#include "courses/steps.h"

namespace korvex {

// One cycle of an item without a course. Values are computed one after the other, once: a limited
// number of states is kept on the way, so that a later question begins at a near one. A signal that
// asks the process to end also ends this, and then the results mean nothing.
class LiteralCycle {
 public:
  explicit LiteralCycle(const LiteralItem& begin) : front_(begin), marks_{begin} {}

  // How many values the cycle has; endless when its end is not among the first `most`.
  Steps length(Steps most);

  // The item after `values` values of the cycle, before it begins again.
  LiteralItem after(Steps values);

 private:
  void walk(Steps values);
  void mark();

  LiteralItem front_;
  Steps walked_ = 0;  // values to the front
  bool has_ended_ = false;
  bool is_stuck_ = false;  // there is no next value: the item shows nothing, or fails

  static constexpr std::size_t most_marks = 32;
  Steps mark_every_ = 1024;
  std::vector<LiteralItem> marks_;
};

}  // namespace korvex
