#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "courses/course.h"
#include "settings/col_inf.h"

namespace korvex {

// How one item goes through its values in closed form: the courses of its elements, which are all
// at the same step, and the cycle that they make together. Owns the courses; refers to nothing.
class ItemCourse {
 public:
  // Nothing for an item with an element that has no course.
  static std::optional<ItemCourse> of(const ClFmtColInf& column, LayoutKind layout_kind);

  const std::vector<std::unique_ptr<const Course>>& elements() const { return elements_; }

  // After so many values the cycle is over: the item starts again, or runs empty.
  Steps end() const { return end_; }

  // How many of the elements a step shows: an element may cut off those after it in the last record
  // of a cycle.
  std::size_t shown_at(Steps step) const {
    return step + 1 == end_ ? shown_at_end_ : elements_.size();
  }
  bool is_cut_at_end() const { return shown_at_end_ < elements_.size(); }

  // Bytes of the texts that show all elements, and of the text of a step.
  std::size_t size() const { return sizes_.back(); }
  std::size_t size_at(Steps step) const { return sizes_[shown_at(step)]; }

 private:
  void tell_end(const ClFmtColInf& column, const ElementContext& context);

  std::vector<std::unique_ptr<const Course>> elements_;
  Steps end_ = endless;
  std::size_t shown_at_end_ = 0;
  std::vector<std::size_t> sizes_;  // of the first elements together, by how many
};

// What the elements of an item's settings share.
ElementContext element_context(const ClFmtColInf& column, LayoutKind layout_kind);

}  // namespace korvex
