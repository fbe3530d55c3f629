#include "host/ways/tree.h"

#include <algorithm>

namespace korvex::ways {

// As many parents as take the children with the mean of the bounds, rounded down: their least is
// never too much for them. Where their most is too little, the rest goes to one parent more; it is
// less than their most. Since each parent has a child at least and they are in order, the children
// of a record come after it.
Result<Tree> Tree::make(KeyFor<Use::each> key, std::uint64_t records, GroupBounds bounds) {
  const std::uint64_t children = records == 0 ? 0 : records - 1;
  bounds.keeps_order = true;
  bounds.least = std::max<std::uint64_t>(bounds.least, 1);
  if (bounds.most == 0) return Refusal{"no record may have children"};
  const Wide mean_twice = Wide{bounds.least} + bounds.most;
  const auto parents = static_cast<std::uint64_t>(2 * Wide{children} / mean_twice);
  const auto placed =
      static_cast<std::uint64_t>(std::min(Wide{children}, Wide{bounds.most} * parents));
  const Result<GroupSizes> sizes = GroupSizes::make(key, placed, parents, bounds);
  if (!sizes) return Refusal{sizes.reason()};
  return Tree(*sizes, children - placed);
}

std::optional<Member> Tree::member(std::uint64_t record) const {
  if (record == 0) return std::nullopt;
  const std::uint64_t child = record - 1;
  if (child < sizes_.records()) return sizes_.member(child);
  return Member{sizes_.parents(), child - sizes_.records(), last_children_};
}

Members Tree::children(std::uint64_t record) const {
  if (record > sizes_.parents()) return {};
  Members members = record == sizes_.parents() ? Members{sizes_.records(), last_children_}
                                               : sizes_.members(record);
  ++members.first;
  return members;
}

}  // namespace korvex::ways
