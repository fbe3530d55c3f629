#include "host/records/field_ways.h"

#include <algorithm>
#include <utility>

#include "platform/printable_text.h"

namespace korvex::host {

using ways::Use;

FieldWays::FieldWays(FieldPlan& plan, FieldSources& sources)
    : plan_(plan), sources_(sources), groups_of_key_(plan.size()) {
  for (std::size_t i = 0; i < plan.size(); ++i) {
    if (!sources.takes_a_way(i)) continue;
    const ItemValues& values = *plan.values_of(i);
    if (values.way.joint) joints_[values.way.joint->text].members.push_back(i);
    if (values.group) groups_[values.group->text].members.push_back(i);
  }
}

std::shared_ptr<sources::Groups> FieldWays::named_groups(std::size_t i, const PlacedText& name,
                                                         std::string_view key) {
  const auto other = plan_.find(name.text);
  if (other && makes_groups(*other)) return groups_of(*other);
  plan_.report(i, name.place,
               std::string(key) + " is " + quoted_text(name.text) +
                   ", expected an item with type = \"key\" and each");
  return nullptr;
}

std::shared_ptr<sources::Way> FieldWays::way_of(std::size_t i) {
  const std::optional<PlacedText>& name = plan_.values_of(i)->group;
  if (!name) return make_way(i);
  Group& group = groups_.at(name->text);
  if (!joins_group(i, group)) return nullptr;
  const auto [way, is_new] = group.ways.try_emplace(std::string(table_of(i)));
  if (is_new) way->second = make_way(i);
  return way->second;
}

// Whether the items of a group can go together.
bool FieldWays::joins_group(std::size_t i, const Group& group) {
  const ItemValues& values = *plan_.values_of(i);
  const FieldSources::Values* own = sources_.values(i);
  const FieldSources::Values* first = sources_.values(group.members.front());
  if (own == nullptr || first == nullptr) return false;
  if (own->rows.of.empty() || own->rows.of != first->rows.of) {
    plan_.report(i, values.group->place,
                 "group " + quoted_text(values.group->text) +
                     " has items of other rows, expected items of one list, set or layout");
    return false;
  }
  if (const std::size_t giver = way_giver(i); values.way.is_given() && giver != i) {
    plan_.report(i, values.way.place,
                 "group " + quoted_text(values.group->text) + " has the way of item " +
                     platform::printable(plan_.item(giver).name) + " already, expected one way");
    return false;
  }
  return true;
}

// The item whose way another one takes: of its group the first with a way through its table, or
// through any.
std::size_t FieldWays::way_giver(std::size_t i) {
  const ItemValues* values = plan_.values_of(i);
  const auto group =
      values == nullptr || !values->group ? groups_.end() : groups_.find(values->group->text);
  if (group == groups_.end()) return i;
  std::optional<std::size_t> giver;
  for (const std::size_t member : group->second.members) {
    if (!plan_.values_of(member)->way.is_given()) continue;
    if (table_of(member) == table_of(i)) return member;
    if (!giver) giver = member;
  }
  return giver.value_or(i);
}

std::string_view FieldWays::table_of(std::size_t i) {
  const FieldSources::Values* found = sources_.values(i);
  return found == nullptr ? std::string_view() : found->rows.table;
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
  const auto sizes =
      ways::GroupSizes::make(draw, plan_.records(), found->parent_records(), *key.each);
  return sizes ? std::make_shared<sources::Groups>(*sizes) : report(sizes.reason());
}

std::unique_ptr<sources::Way> FieldWays::make_way(std::size_t i) {
  const FieldSources::Values* found = sources_.values(i);
  if (found == nullptr) return nullptr;
  const std::size_t giver = way_giver(i);
  if (key_with_each(giver) != nullptr) {
    auto groups = groups_of(giver);
    return groups == nullptr ? nullptr : sources::parent_of(std::move(groups));
  }
  const Given given = {i, giver, *found, plan_.values_of(giver)->way};
  if (sources_.is_into_itself(*found)) return make_way_to_earlier(given);
  switch (given.way.order) {
    case Order::forward:
      return sources::forward(found->period, end_of(given));
    case Order::shuffled:
      return make_shuffled(given);
    case Order::random:
      return make_random(given);
    case Order::zipf:
      break;
  }
  return sources::zipf(draw_key<Use::order>(given), found->period, given.way.skew);
}

sources::End FieldWays::end_of(const Given& given) const {
  // The settings know more than the values, which may be those of another item.
  const ClFmtColInf* column = plan_.column(given.giver);
  const ExceededAction action = column != nullptr
                                    ? column->record.exceeded_action
                                    : plan_.values_of(given.giver)->choices.exceeded_action;
  return action == exceeded_action::initialize ? sources::End::stop : sources::End::repeat;
}

// A record that refers to one of its own layout can't wait for those that come after it.
std::unique_ptr<sources::Way> FieldWays::make_way_to_earlier(const Given& given) {
  const WayRules& way = given.way;
  if (way.is_given() && (way.order != Order::random || !way.weights.empty())) {
    plan_.report(given.giver, way.place,
                 "refers to earlier records of the layout itself, expected each or order "
                 "\"random\" for these");
    return nullptr;
  }
  return sources::any_before(draw_key<Use::order>(given));
}

std::unique_ptr<sources::Way> FieldWays::make_shuffled(const Given& given) {
  if (given.way.joint) return make_joint(given);
  const std::uint64_t period = given.found.period;
  if (given.way.within) {
    auto groups = named_groups(given.giver, *given.way.within, "within");
    if (groups == nullptr) return nullptr;
    return sources::shuffled_within(draw_key<Use::order>(given), period, std::move(groups));
  }
  return sources::shuffled(draw_key<Use::order>(given), period, end_of(given));
}

std::unique_ptr<sources::Way> FieldWays::make_joint(const Given& given) {
  Joint& joint = joints_.at(given.way.joint->text);
  if (table_of(given.item) != table_of(given.giver)) {
    plan_.report(given.giver, given.way.joint->place,
                 "joint is through one table of the set, expected joint for item " +
                     platform::printable(plan_.item(given.item).name) + " of another table, too");
    return nullptr;
  }
  if (!joint.shuffle) joint.shuffle = make_joint_shuffle(given, joint);
  if (*joint.shuffle == nullptr) return nullptr;
  const auto place = std::find(joint.members.begin(), joint.members.end(), given.giver);
  return sources::joint(*joint.shuffle, static_cast<std::size_t>(place - joint.members.begin()),
                        end_of(given));
}

std::shared_ptr<ways::JointShuffle> FieldWays::make_joint_shuffle(const Given& given,
                                                                  const Joint& joint) {
  const PlacedText& name = *given.way.joint;
  std::vector<std::uint64_t> periods;
  for (const std::size_t member : joint.members) {
    const FieldSources::Values* found = sources_.values(member);
    if (found == nullptr) return nullptr;
    periods.push_back(found->period);
  }
  auto shuffle =
      ways::JointShuffle::make(ways::make_key<Use::joint>(plan_.origin(name.text)), periods);
  if (!shuffle) {
    plan_.report(given.giver, name.place, "joint: " + shuffle.reason());
    return nullptr;
  }
  return std::make_shared<ways::JointShuffle>(std::move(*shuffle));
}

std::unique_ptr<sources::Way> FieldWays::make_random(const Given& given) {
  const WayRules& way = given.way;
  const std::uint64_t period = given.found.period;
  const std::vector<ways::Fraction>& weights =
      way.weights.empty() ? given.found.weights : way.weights;
  if (weights.empty()) return sources::random(draw_key<Use::order>(given), period);
  if (weights.size() != period) {
    plan_.report(given.giver, way.weights_place,
                 "weights has " + std::to_string(weights.size()) + " numbers, expected " +
                     std::to_string(period) + ", one for each value");
    return nullptr;
  }
  const auto proportions = ways::Proportions::of_weights(weights);
  if (!proportions) {
    plan_.report(given.giver, way.weights_place, "weights: " + proportions.reason());
    return nullptr;
  }
  return sources::weighted(draw_key<Use::weights>(given), *proportions, plan_.records());
}

}  // namespace korvex::host
