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

FieldWays::FieldWays(FieldPlan& plan) : plan_(plan), groups_of_key_(plan.size()) {
  for (std::size_t i = 0; i < plan.size(); ++i) share_way(i);
}

// Finds out whose way an item takes, and checks that companions can go together.
void FieldWays::share_way(std::size_t i) {
  const ItemValues* values = plan_.values_of(i);
  if (values == nullptr || plan_.part(i).source == nullptr) return;
  if (values->group) join_group(i, *values);
  if (values->way.joint) joints_[values->way.joint->text].members.push_back(i);
}

std::shared_ptr<sources::Groups> FieldWays::named_groups(std::size_t i, const PlacedText& name,
                                                         std::string_view key) {
  const auto other = plan_.find(name.text);
  const std::size_t errors_before = plan_.errors().size();
  auto groups = other ? groups_of(*other) : nullptr;
  if (groups == nullptr && plan_.errors().size() == errors_before) {
    plan_.report(i, name.place,
                 std::string(key) + " is " + quoted_text(name.text) +
                     ", expected an item of type \"key\" with each");
  }
  return groups;
}

std::shared_ptr<sources::Way> FieldWays::way_of(std::size_t i) {
  const ItemValues& values = *plan_.values_of(i);
  if (!values.group) return make_way(i);
  std::shared_ptr<sources::Way>& way = groups_[values.group->text].way;
  if (way == nullptr) way = make_way(way_giver(i));
  return way;
}

void FieldWays::join_group(std::size_t i, const ItemValues& values) {
  Group& group = groups_.try_emplace(values.group->text, Group{i, {}, {}}).first->second;
  if (plan_.part(i).rows.empty() || plan_.part(i).rows != plan_.part(group.first).rows) {
    plan_.report(i, values.group->place,
                 "group " + quoted_text(values.group->text) +
                     " has items of other rows, expected items of one list, set or layout");
  } else if (values.way.is_given() && group.way_giver) {
    plan_.report(i, values.way.place,
                 "group " + quoted_text(values.group->text) + " has the way of item " +
                     platform::printable(plan_.item(*group.way_giver).name) +
                     " already, expected one way");
  } else if (values.way.is_given()) {
    group.way_giver = i;
  }
}

// The item whose way another one takes: that of its group, or its own.
std::size_t FieldWays::way_giver(std::size_t i) const {
  const std::optional<PlacedText>& name = plan_.values_of(i)->group;
  const auto group = name ? groups_.find(name->text) : groups_.end();
  return group == groups_.end() ? i : group->second.way_giver.value_or(i);
}

// The groups that a key with each makes of the records; null for any other item, and after an
// error.
std::shared_ptr<sources::Groups> FieldWays::groups_of(std::size_t i) {
  if (plan_.values_of(i) == nullptr) return nullptr;
  const std::size_t giver = way_giver(i);
  const auto* key = std::get_if<KeyValues>(&plan_.values_of(giver)->own);
  if (key == nullptr || !key->each) return nullptr;
  if (groups_of_key_[giver] == nullptr) {
    const auto sizes = ways::GroupSizes::make(plan_.way_key<Use::each>(giver), plan_.records(),
                                              plan_.part(giver).period, *key->each);
    if (!sizes) {
      plan_.report(giver, key->each_place, "each: " + sizes.reason());
      return nullptr;
    }
    groups_of_key_[giver] = std::make_shared<sources::Groups>(*sizes);
  }
  return groups_of_key_[giver];
}

std::unique_ptr<sources::Way> FieldWays::make_way(std::size_t i) {
  const ItemValues& values = *plan_.values_of(i);
  const WayRules& way = values.way;
  const std::uint64_t period = plan_.part(i).period;
  if (const auto* key = std::get_if<KeyValues>(&values.own); key != nullptr && key->each) {
    auto groups = groups_of(i);
    return groups == nullptr ? nullptr : sources::parent_of(std::move(groups));
  }
  switch (way.order) {
    case Order::forward:
      return sources::forward(period, end_of(values));
    case Order::shuffled:
      return make_shuffled(i, way, period);
    case Order::random:
      return make_random(i, way, period);
    case Order::zipf:
      break;
  }
  return sources::zipf(plan_.way_key<Use::order>(i), period, way.skew);
}

std::unique_ptr<sources::Way> FieldWays::make_shuffled(std::size_t i, const WayRules& way,
                                                       std::uint64_t period) {
  const ItemValues& values = *plan_.values_of(i);
  if (way.joint) return make_joint(i, way);
  if (way.within) {
    auto groups = named_groups(i, *way.within, "within");
    if (groups == nullptr) return nullptr;
    return sources::shuffled_within(plan_.way_key<Use::order>(i), period, std::move(groups));
  }
  return sources::shuffled(plan_.way_key<Use::order>(i), period, end_of(values));
}

std::unique_ptr<sources::Way> FieldWays::make_joint(std::size_t i, const WayRules& way) {
  Joint& company = joints_[way.joint->text];
  if (company.shuffle == nullptr) {
    std::vector<std::uint64_t> periods;
    for (const std::size_t member : company.members) {
      periods.push_back(plan_.part(member).period);
    }
    auto shuffle = ways::JointShuffle::make(
        ways::make_key<Use::joint>(plan_.origin(way.joint->text)), periods);
    if (!shuffle) {
      plan_.report(i, way.joint->place, "joint: " + shuffle.reason());
      return nullptr;
    }
    company.shuffle = std::make_shared<ways::JointShuffle>(std::move(*shuffle));
  }
  const auto place = std::find(company.members.begin(), company.members.end(), i);
  return sources::joint(company.shuffle, static_cast<std::size_t>(place - company.members.begin()),
                        end_of(*plan_.values_of(i)));
}

std::unique_ptr<sources::Way> FieldWays::make_random(std::size_t i, const WayRules& way,
                                                     std::uint64_t period) {
  const std::vector<ways::Fraction>& weights =
      way.weights.empty() ? plan_.part(i).weights : way.weights;
  if (weights.empty()) return sources::random(plan_.way_key<Use::order>(i), period);
  if (weights.size() != period) {
    plan_.report(i, way.weights_place,
                 "weights has " + std::to_string(weights.size()) + " numbers, expected " +
                     std::to_string(period) + ", one for each value");
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
