#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <variant>

#include "host/sources/dependencies.h"
#include "host/ways/group_sizes.h"
#include "host/ways/tree.h"

namespace korvex::sources {

// Which parent a record belongs to, for all fields that ask it of one key: a record of another
// table, or an earlier one of its own. The group of the record that was asked for last is kept: its
// other records cost nothing. Of one thread.
class Groups {
 public:
  explicit Groups(ways::GroupSizes sizes) : kinship_(std::move(sizes)) {}
  explicit Groups(ways::Tree tree) : kinship_(std::move(tree)) {}

  // Nothing for the first record of a tree, which is no record's child.
  std::optional<ways::Member> member(std::uint64_t record) {
    if (record < first_ || record - first_ >= latest_.count) {
      const std::optional<ways::Member> found = find(record);
      if (!found) return std::nullopt;
      latest_ = *found;
      first_ = record - latest_.place;
    }
    return ways::Member{latest_.parent, record - first_, latest_.count};
  }

  // The records of a parent; none for what is no parent.
  ways::Members members(std::uint64_t parent) const {
    if (const ways::Tree* tree = this->tree()) return tree->children(parent);
    return parent < sizes().parents() ? sizes().members(parent) : ways::Members{};
  }

  // Parents are below that.
  std::uint64_t parents() const {
    return tree() != nullptr ? tree()->end_of_parents() : sizes().parents();
  }

  // Those that have a parent, and the first one of a tree.
  std::uint64_t records() const {
    return tree() != nullptr ? tree()->records() : sizes().records();
  }

  // How many records the largest group has, and how many parents have any.
  ways::Count largest() const {
    return tree() != nullptr ? tree()->most_children() : sizes().largest();
  }
  ways::Count parents_with_records() const {
    return tree() != nullptr ? ways::Count::of(parents()) : sizes().parents_with_records();
  }

  // Whether every record has a parent.
  bool have_all() const { return tree() == nullptr; }

  Thing parent_thing() const { return {this, 0}; }
  Thing line_thing() const { return {this, 1}; }

  // A record is known by its parent and its place among that parent's records: who has neither is
  // the first one of a tree.
  void tell(Dependencies& dependencies) const {
    if (!dependencies.is_new(parent_thing())) return;
    dependencies.add({parent_thing(), line_thing()}, the_record);
    if (have_all() && largest().most <= 1) dependencies.add({}, line_thing());
  }

 private:
  const ways::Tree* tree() const { return std::get_if<ways::Tree>(&kinship_); }
  const ways::GroupSizes& sizes() const { return std::get<ways::GroupSizes>(kinship_); }

  std::optional<ways::Member> find(std::uint64_t record) const {
    return tree() != nullptr ? tree()->member(record) : std::optional(sizes().member(record));
  }

  std::variant<ways::GroupSizes, ways::Tree> kinship_;
  ways::Member latest_;
  std::uint64_t first_ = 0;
};

}  // namespace korvex::sources
