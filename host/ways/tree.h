#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "host/ways/group_sizes.h"

namespace korvex::ways {

// Gives each of some records, but the first, a parent among the records before it, so that they are
// one tree, level by level. A record that has children has as many as the bounds say (the last one
// perhaps fewer); about one record in their mean has any, and the others are leaves.
class Tree {
 public:
  // Up to `most_records`. A least of 0 is one of 1, since leaves have none anyway. Refused when the
  // bounds are in the wrong order, or when no record may have children.
  static Result<Tree> make(KeyFor<Use::each> key, std::uint64_t records, GroupBounds bounds);

  // Nothing for the first record.
  std::optional<Member> member(std::uint64_t record) const;

  Members children(std::uint64_t record) const;

  std::uint64_t records() const { return 1 + sizes_.records() + last_children_; }

  // How many children the record with most of them has.
  Count most_children() const {
    const Count largest = sizes_.largest();
    return {std::max(largest.least, last_children_), std::max(largest.most, last_children_)};
  }

  // No record from here on has any.
  std::uint64_t end_of_parents() const { return sizes_.parents() + (last_children_ > 0 ? 1 : 0); }

 private:
  Tree(const GroupSizes& sizes, std::uint64_t last_children)
      : sizes_(sizes), last_children_(last_children) {}

  // All children but those of the last parent.
  GroupSizes sizes_;
  std::uint64_t last_children_;
};

}  // namespace korvex::ways
