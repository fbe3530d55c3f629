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
  bool makes_groups(std::size_t i) { return key_with_each(way_giver(i)) != nullptr; }

  // The groups that such a key makes of the records; null after an error.
  std::shared_ptr<sources::Groups> groups_of(std::size_t i);

  // Those of the key that item `i` names at `key`.
  std::shared_ptr<sources::Groups> named_groups(std::size_t i, const PlacedText& name,
                                                std::string_view key);

 private:
  // Fields that take one row; of a set of several tables, one of each.
  struct Group {
    std::vector<std::size_t> members;
    std::map<std::string, std::shared_ptr<sources::Way>> ways;  // by the table, once one is needed
  };

  // Fields that go through all combinations together.
  struct Joint {
    std::vector<std::size_t> members;
    std::optional<std::shared_ptr<ways::JointShuffle>> shuffle;  // once it is needed
  };

  // Whose way an item takes, or a table of the items of its group.
  struct Given {
    std::size_t item;
    std::size_t giver;
    const FieldSources::Values& found;  // of the item
    const WayRules& way;                // of the giver
  };

  bool joins_group(std::size_t i, const Group& group);
  std::size_t way_giver(std::size_t i);
  std::string_view table_of(std::size_t i);
  const KeyValues* key_with_each(std::size_t i) const;
  std::shared_ptr<sources::Groups> make_groups(std::size_t i);
  std::unique_ptr<sources::Way> make_way(std::size_t i);
  std::unique_ptr<sources::Way> make_way_to_earlier(const Given& given);
  std::unique_ptr<sources::Way> make_shuffled(const Given& given);
  std::unique_ptr<sources::Way> make_joint(const Given& given);
  std::shared_ptr<ways::JointShuffle> make_joint_shuffle(const Given& given, const Joint& joint);
  std::unique_ptr<sources::Way> make_random(const Given& given);
  sources::End end_of(const Given& given) const;

  template <ways::Use use>
  ways::KeyFor<use> draw_key(const Given& given) const {
    return plan_.way_key<use>(given.item, given.found.rows.table);
  }

  FieldPlan& plan_;
  FieldSources& sources_;
  std::map<std::string, Group> groups_;
  std::map<std::string, Joint> joints_;
  // Once they are needed.
  std::vector<std::optional<std::shared_ptr<sources::Groups>>> groups_of_key_;
};

}  // namespace korvex::host
