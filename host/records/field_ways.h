#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/records/field_plan.h"
#include "host/sources/groups.h"
#include "host/sources/way.h"
#include "host/ways/shuffle.h"

namespace korvex::host {

// The ways through the sources of a plan: those of single items, those that a group takes together,
// and those that go through all combinations. What is wrong is reported to the plan, which must
// outlive this object and have its sources.
class FieldWays {
 public:
  explicit FieldWays(FieldPlan& plan);

  // The way of an item that has a source, shared by the items of a group; null after an error.
  std::shared_ptr<sources::Way> way_of(std::size_t i);

  // The groups of the key that item `i` names at `key`; null after an error.
  std::shared_ptr<sources::Groups> named_groups(std::size_t i, const PlacedText& name,
                                                std::string_view key);

 private:
  // Fields that take one row.
  struct Group {
    std::size_t first = 0;
    std::optional<std::size_t> way_giver;
    std::shared_ptr<sources::Way> way;
  };

  // Fields that go through all combinations together.
  struct Joint {
    std::vector<std::size_t> members;
    std::shared_ptr<ways::JointShuffle> shuffle;
  };

  void share_way(std::size_t i);
  void join_group(std::size_t i, const ItemValues& values);
  std::size_t way_giver(std::size_t i) const;
  std::shared_ptr<sources::Groups> groups_of(std::size_t i);
  std::unique_ptr<sources::Way> make_way(std::size_t i);
  std::unique_ptr<sources::Way> make_shuffled(std::size_t i, const WayRules& way,
                                              std::uint64_t period);
  std::unique_ptr<sources::Way> make_joint(std::size_t i, const WayRules& way);
  std::unique_ptr<sources::Way> make_random(std::size_t i, const WayRules& way,
                                            std::uint64_t period);

  FieldPlan& plan_;
  std::map<std::string, Group> groups_;
  std::map<std::string, Joint> joints_;
  std::vector<std::shared_ptr<sources::Groups>> groups_of_key_;  // once they are needed
};

}  // namespace korvex::host
