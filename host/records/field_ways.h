#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/records/field_plan.h"
#include "host/records/field_sources.h"
#include "host/sources/groups.h"
#include "host/sources/way.h"
#include "host/ways/shuffle.h"

namespace korvex::host {

// The ways through the values of a plan's items: those of single items, those that a group takes
// together, and those that go through all combinations. Each is made when it is first asked for.
// What is wrong is reported to the plan, which must outlive this object, as must the sources.
class FieldWays {
 public:
  FieldWays(FieldPlan& plan, FieldSources& sources);

  // The way of an item that takes one, shared by the items of a group; null after an error.
  std::shared_ptr<sources::Way> way_of(std::size_t i);

  // Whether an item is a key that says how many records belong to each of the other layout.
  bool makes_groups(std::size_t i) const { return key_with_each(way_giver(i)) != nullptr; }

  // The groups that such a key makes of the records; null after an error.
  std::shared_ptr<sources::Groups> groups_of(std::size_t i);

  // Those of the key that item `i` names at `key`.
  std::shared_ptr<sources::Groups> named_groups(std::size_t i, const PlacedText& name,
                                                std::string_view key);

 private:
  // Fields that take one row.
  struct Group {
    std::size_t first = 0;
    std::optional<std::size_t> way_giver;
    std::optional<std::shared_ptr<sources::Way>> way;  // once it is needed
  };

  // Fields that go through all combinations together.
  struct Joint {
    std::vector<std::size_t> members;
    std::optional<std::shared_ptr<ways::JointShuffle>> shuffle;  // once it is needed
  };

  bool joins_group(std::size_t i, const Group& group);
  std::size_t way_giver(std::size_t i) const;
  const KeyValues* key_with_each(std::size_t i) const;
  std::shared_ptr<sources::Groups> make_groups(std::size_t i);
  std::unique_ptr<sources::Way> make_way(std::size_t i);
  std::unique_ptr<sources::Way> make_way_to_earlier(std::size_t i);
  std::unique_ptr<sources::Way> make_shuffled(std::size_t i, std::uint64_t period);
  std::unique_ptr<sources::Way> make_joint(std::size_t i);
  std::shared_ptr<ways::JointShuffle> make_joint_shuffle(std::size_t i, const Joint& joint);
  std::unique_ptr<sources::Way> make_random(std::size_t i, const FieldSources::Values& found);

  FieldPlan& plan_;
  FieldSources& sources_;
  std::map<std::string, Group> groups_;
  std::map<std::string, Joint> joints_;
  // Once they are needed.
  std::vector<std::optional<std::shared_ptr<sources::Groups>>> groups_of_key_;
};

}  // namespace korvex::host
