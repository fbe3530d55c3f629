#include "host/records/field_ways.h"

#include <algorithm>
#include <utility>

#include "platform/printable_text.h"

namespace korvex::host {

using ways::Use;

namespace {

sources::End end_of(const ItemValues& values) {
  return values.choices.exceeded_action == exceeded_action::initialize ? sources::End::stop
                                                                       : sources::End::repeat;
}

}  // namespace

FieldWays::FieldWays(FieldPlan& plan, FieldSources& sources)
    : plan_(plan), sources_(sources), groups_of_key_(plan.size()) {
  for (std::size_t i = 0; i < plan.size(); ++i) {
    if (!sources.takes_a_way(i)) continue;
    const ItemValues& values = *plan.values_of(i);
    if (values.way.joint) joints_[values.way.joint->text].members.push_back(i);
    if (!values.group) continue;
    Group& group = groups_.try_emplace(values.group->text, Group{i, {}, {}}).first->second;
    if (values.way.is_given() && !group.way_giver) group.way_giver = i;
  }
}

std::shared_ptr<sources::Groups> FieldWays::named_groups(std::size_t i, const PlacedText& name,
                                                         std::string_view key) {
  const auto other = plan_.find(name.text);
  if (other && makes_groups(*other)) return groups_of(*other);
  plan_.report(i, name.place,
               std::string(key) + " is " + quoted_text(name.text) +
                   ", expected an item of type \"key\" with each");
  return nullptr;
}

std::shared_ptr<sources::Way> FieldWays::way_of(std::size_t i) {
  const std::optional<PlacedText>& name = plan_.values_of(i)->group;
  if (!name) return make_way(i);
  Group& group = groups_.at(name->text);
  if (!joins_group(i, group)) return nullptr;
  if (!group.way) group.way = make_way(way_giver(i));
  return *group.way;
}

// Whether the items of a group can go together.
bool FieldWays::joins_group(std::size_t i, const Group& group) {
  const ItemValues& values = *plan_.values_of(i);
  const FieldSources::Values* own = sources_.values(i);
  const FieldSources::Values* first = sources_.values(group.first);
  if (own == nullptr || first == nullptr) return false;
  if (own->rows.empty() || own->rows != first->rows) {
    plan_.report(i, values.group->place,
                 "group " + quoted_text(values.group->text) +
                     " has items of other rows, expected items of one list, set or layout");
    return false;
  }
  if (values.way.is_given() && group.way_giver != i) {
    plan_.report(i, values.way.place,
                 "group " + quoted_text(values.group->text) + " has the way of item " +
                     platform::printable(plan_.item(*group.way_giver).name) +
                     " already, expected one way");
    return false;
  }
  return true;
}

// The item whose way another one takes: that of its group, or its own.
std::size_t FieldWays::way_giver(std::size_t i) const {
  const ItemValues* values = plan_.values_of(i);
  if (values == nullptr || !values->group) return i;
  const auto group = groups_.find(values->group->text);
  return group == groups_.end() ? i : group->second.way_giver.value_or(i);
}

const KeyValues* FieldWays::key_with_each(std::size_t i) const {
  const ItemValues* values = plan_.values_of(i);
  const auto* key = values == nullptr ? nullptr : std::get_if<KeyValues>(&values->own);
  return key != nullptr && key->each ? key : nullptr;
}

std::shared_ptr<sources::Groups> FieldWays::groups_of(std::size_t i) {
  const std::size_t giver = way_giver(i);
  auto& groups = groups_of_key_[giver];
  if (!groups) groups = make_groups(giver);
  return *groups;
}

std::shared_ptr<sources::Groups> FieldWays::make_groups(std::size_t i) {
  const FieldSources::Values* found = sources_.values(i);
  if (found == nullptr) return nullptr;
  const KeyValues& key = *key_with_each(i);
  const auto draw = plan_.way_key<Use::each>(i);
  const auto report = [&](const std::string& reason) {
    plan_.report(i, key.each_place, "each: " + reason);
    return nullptr;
  };
  if (sources_.is_into_itself(*found)) {
    const auto tree = ways::Tree::make(draw, plan_.records(), *key.each);
    return tree ? std::make_shared<sources::Groups>(*tree) : report(tree.reason());
  }
  const auto sizes = ways::GroupSizes::make(draw, plan_.records(), found->period, *key.each);
  return sizes ? std::make_shared<sources::Groups>(*sizes) : report(sizes.reason());
}

std::unique_ptr<sources::Way> FieldWays::make_way(std::size_t i) {
  const FieldSources::Values* found = sources_.values(i);
  if (found == nullptr) return nullptr;
  if (key_with_each(i) != nullptr) {
    auto groups = groups_of(i);
    return groups == nullptr ? nullptr : sources::parent_of(std::move(groups));
  }
  if (sources_.is_into_itself(*found)) return make_way_to_earlier(i);
  const ItemValues& values = *plan_.values_of(i);
  switch (values.way.order) {
    case Order::forward:
      return sources::forward(found->period, end_of(values));
    case Order::shuffled:
      return make_shuffled(i, found->period);
    case Order::random:
      return make_random(i, *found);
    case Order::zipf:
      break;
  }
  return sources::zipf(plan_.way_key<Use::order>(i), found->period, values.way.skew);
}

// A record that refers to one of its own layout can't wait for those that come after it.
std::unique_ptr<sources::Way> FieldWays::make_way_to_earlier(std::size_t i) {
  const WayRules& way = plan_.values_of(i)->way;
  if (way.is_given() && (way.order != Order::random || !way.weights.empty())) {
    plan_.report(i, way.place,
                 "leads to earlier records of the layout itself, expected each or order "
                 "\"random\" for these");
    return nullptr;
  }
  return sources::any_before(plan_.way_key<Use::order>(i));
}

std::unique_ptr<sources::Way> FieldWays::make_shuffled(std::size_t i, std::uint64_t period) {
  const ItemValues& values = *plan_.values_of(i);
  if (values.way.joint) return make_joint(i);
  if (values.way.within) {
    auto groups = named_groups(i, *values.way.within, "within");
    if (groups == nullptr) return nullptr;
    return sources::shuffled_within(plan_.way_key<Use::order>(i), period, std::move(groups));
  }
  return sources::shuffled(plan_.way_key<Use::order>(i), period, end_of(values));
}

std::unique_ptr<sources::Way> FieldWays::make_joint(std::size_t i) {
  const ItemValues& values = *plan_.values_of(i);
  Joint& joint = joints_.at(values.way.joint->text);
  if (!joint.shuffle) joint.shuffle = make_joint_shuffle(i, joint);
  if (*joint.shuffle == nullptr) return nullptr;
  const auto place = std::find(joint.members.begin(), joint.members.end(), i);
  return sources::joint(*joint.shuffle, static_cast<std::size_t>(place - joint.members.begin()),
                        end_of(values));
}

std::shared_ptr<ways::JointShuffle> FieldWays::make_joint_shuffle(std::size_t i,
                                                                  const Joint& joint) {
  const PlacedText& name = *plan_.values_of(i)->way.joint;
  std::vector<std::uint64_t> periods;
  for (const std::size_t member : joint.members) {
    const FieldSources::Values* found = sources_.values(member);
    if (found == nullptr) return nullptr;
    periods.push_back(found->period);
  }
  auto shuffle =
      ways::JointShuffle::make(ways::make_key<Use::joint>(plan_.origin(name.text)), periods);
  if (!shuffle) {
    plan_.report(i, name.place, "joint: " + shuffle.reason());
    return nullptr;
  }
  return std::make_shared<ways::JointShuffle>(std::move(*shuffle));
}

std::unique_ptr<sources::Way> FieldWays::make_random(std::size_t i,
                                                     const FieldSources::Values& found) {
  const WayRules& way = plan_.values_of(i)->way;
  const std::vector<ways::Fraction>& weights = way.weights.empty() ? found.weights : way.weights;
  if (weights.empty()) return sources::random(plan_.way_key<Use::order>(i), found.period);
  if (weights.size() != found.period) {
    plan_.report(i, way.weights_place,
                 "weights has " + std::to_string(weights.size()) + " numbers, expected " +
                     std::to_string(found.period) + ", one for each value");
    return nullptr;
  }
  const auto proportions = ways::Proportions::of_weights(weights);
  if (!proportions) {
    plan_.report(i, way.weights_place, "weights: " + proportions.reason());
    return nullptr;
  }
  return sources::weighted(plan_.way_key<Use::weights>(i), *proportions, plan_.records());
}

}  // namespace korvex::host
