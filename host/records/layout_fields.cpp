#include "host/records/layout_fields.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "host/layout/own_items.h"
#include "host/records/engine_source.h"
#include "host/records/row_values.h"
#include "host/sources/template_source.h"
#include "host/sources/template_text.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

using sources::Field;
using ways::Use;

// Fields ask each other, each in a call of its own.
constexpr std::size_t most_nested_fields = 1000;

std::string quoted(std::string_view text) { return '"' + platform::printable(text) + '"'; }

sources::End end_of(const ItemValues& values) {
  return values.choices.exceeded_action == exceeded_action::initialize ? sources::End::stop
                                                                       : sources::End::repeat;
}

// Makes the fields of the items, each after those that it asks.
class FieldMaker {
 public:
  FieldMaker(const Layout& layout, const std::vector<PreparedItem>& items, Run& run)
      : layout_(layout),
        items_(items),
        run_(run),
        engine_(std::make_shared<EngineRecords>(run, layout.kind)),
        engine_facts_(run.field_facts()),
        parts_(items.size()) {
    made_.fields.resize(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
      names_.push_back(items[i].item->name);
    }
    std::size_t engine_fields = 0;
    for (std::size_t i = 0; i < items.size(); ++i) {
      places_.try_emplace(names_[i], i);
      if (items[i].column != nullptr) parts_[i].engine_field = engine_fields++;
    }
  }

  LayoutFields make() {
    for (std::size_t i = 0; i < items_.size(); ++i) take_source(i);
    if (!made_.errors.empty()) return std::move(made_);
    for (std::size_t i = 0; i < items_.size(); ++i) share_way(i);
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (parts_[i].state == State::unmade) make_field(i);
    }
    return std::move(made_);
  }

 private:
  enum class State { unmade, in_the_making, made };

  // What is known of an item before its field.
  struct Part {
    std::size_t engine_field = 0;  // in the run, where the item has settings
    State state = State::unmade;
    std::unique_ptr<sources::Source> source;  // null: made together with the field
    std::vector<ways::Fraction> weights;      // that come with the source
    std::string rows;                         // of lists and sets
  };

  // Fields that take one row, or go through all combinations.
  struct Company {
    std::vector<std::size_t> members;
    std::shared_ptr<ways::JointShuffle> shuffle;
  };

  const LayoutItem& item(std::size_t i) const { return *items_[i].item; }

  // Null for an item that keeps its settings.
  const ItemValues* values_of(std::size_t i) const {
    return item(i).values ? &*item(i).values : nullptr;
  }

  void report(std::size_t i, SourcePlace place, const std::string& text) {
    made_.errors.push_back({place, "item " + platform::printable(names_[i]) + ": " + text});
  }

  std::optional<std::size_t> find(const PlacedText& name) const {
    const auto place = places_.find(name.text);
    return place == places_.end() ? std::nullopt : std::optional(place->second);
  }

  ways::KeyOrigin origin(std::string_view salt) const { return {layout_.seed, layout_.salt, salt}; }

  std::string_view salt_of(std::size_t i) const {
    const ItemValues* values = values_of(i);
    return values != nullptr && values->salt ? values->salt->text : names_[i];
  }

  // The values that a chain of references leads to; its own without one.
  const ItemValues* referenced_values(std::size_t i) const {
    const ItemValues* values = values_of(i);
    for (std::size_t hops = 0; hops < items_.size() && values != nullptr; ++hops) {
      if (values->source != ValueSource::reference) break;
      const auto target = places_.find(values->item_name);
      if (target == places_.end()) return nullptr;
      values = values_of(target->second);
    }
    return values;
  }

  // --- Sources -----------------------------------------------------------------------------------

  void take_rows(std::size_t i, std::optional<RowValues> rows) {
    if (!rows) return;
    parts_[i].source = std::move(rows->source);
    parts_[i].weights = std::move(rows->weights);
    parts_[i].rows = std::move(rows->rows);
  }

  // The sources that ask no other field.
  void take_source(std::size_t i) {
    const ItemValues* values = values_of(i);
    if (values == nullptr || is_plain(item(i))) return;
    const bool has_way = values->leads_through();
    const ItemValues* origin = has_way ? referenced_values(i) : values;
    if (origin == nullptr) return;
    if (const auto* list = std::get_if<ListValues>(&origin->own)) {
      take_rows(i, read_rows(*list, item(i), layout_, made_.errors));
    } else if (const auto* builtin = std::get_if<BuiltinValues>(&origin->own)) {
      take_rows(i, read_rows(*builtin, item(i), layout_, made_.errors));
    } else if (has_way) {
      take_course(i, *values);
    }
    if (parts_[i].source != nullptr && *parts_[i].source->period() > ways::most_indices) {
      report(i, values->way.place, "has more values than a way can lead through");
    }
  }

  void take_course(std::size_t i, const ItemValues& values) {
    if (items_[i].column != nullptr) {
      const ItemGenerator& generator = *run_.fields()[parts_[i].engine_field];
      parts_[i].source = make_course_source(generator, *items_[i].column, layout_.kind);
    }
    if (parts_[i].source != nullptr) return;
    report(i, values.own_keys.front().place,
           values.own_keys.front().key +
               " needs to know how many values there are, which cannot be told here, expected "
               "order \"forward\"");
  }

  // --- Ways --------------------------------------------------------------------------------------

  // Finds out whose way an item takes, and checks that companions can go together.
  void share_way(std::size_t i) {
    const ItemValues* values = values_of(i);
    if (values == nullptr || parts_[i].source == nullptr) return;
    if (values->group) join_group(i, *values);
    if (values->way.joint) joints_[values->way.joint->text].members.push_back(i);
  }

  void join_group(std::size_t i, const ItemValues& values) {
    Company& group = groups_[values.group->text];
    group.members.push_back(i);
    const std::size_t first = group.members.front();
    if (parts_[i].rows.empty() || parts_[i].rows != parts_[first].rows) {
      report(i, values.group->place,
             "group " + quoted(values.group->text) +
                 " has items of other rows, expected the "
                 "columns of one list or set");
      return;
    }
    const LayoutItem*& giver = group_givers_[values.group->text];
    if (!values.way.is_given()) return;
    if (giver != nullptr) {
      report(i, values.way.place,
             "group " + quoted(values.group->text) + " has the way of item " +
                 platform::printable(giver->name) + " already, expected one way");
      return;
    }
    giver = &item(i);
  }

  const ItemValues& way_giver(std::size_t i) const {
    const ItemValues& values = *values_of(i);
    if (!values.group) return values;
    const auto giver = group_givers_.find(values.group->text);
    return giver == group_givers_.end() || giver->second == nullptr ? values
                                                                    : *giver->second->values;
  }

  template <Use use>
  ways::KeyFor<use> key_of(std::size_t i) const {
    const ItemValues& values = *values_of(i);
    // All ways of a group are drawn from its own key.
    if (values.group) {
      return {{ways::key_bits(origin(values.group->text), Use::group)}};
    }
    return ways::make_key<use>(origin(salt_of(i)));
  }

  std::unique_ptr<sources::Way> make_way(std::size_t i) {
    const ItemValues& values = *values_of(i);
    const WayRules& way = way_giver(i).way;
    const std::uint64_t period = *parts_[i].source->period();
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
    return sources::zipf(key_of<Use::order>(i), period, way.skew);
  }

  std::unique_ptr<sources::Way> make_shuffled(std::size_t i, const WayRules& way,
                                              std::uint64_t period) {
    const ItemValues& values = *values_of(i);
    if (way.joint) return make_joint(i, way);
    if (way.within) {
      report(
          i, way.within->place,
          "within is " + quoted(way.within->text) + ", expected an item of type \"key\" with each");
      return nullptr;
    }
    return sources::shuffled(key_of<Use::order>(i), period, end_of(values));
  }

  std::unique_ptr<sources::Way> make_joint(std::size_t i, const WayRules& way) {
    Company& company = joints_[way.joint->text];
    if (company.shuffle == nullptr) {
      std::vector<std::uint64_t> periods;
      for (const std::size_t member : company.members) {
        periods.push_back(*parts_[member].source->period());
      }
      auto shuffle =
          ways::JointShuffle::make(ways::make_key<Use::joint>(origin(way.joint->text)), periods);
      if (!shuffle) {
        report(i, way.joint->place, "joint: " + shuffle.reason());
        return nullptr;
      }
      company.shuffle = std::make_shared<ways::JointShuffle>(std::move(*shuffle));
    }
    const auto place = std::find(company.members.begin(), company.members.end(), i);
    if (place == company.members.end()) {
      report(i, way.joint->place, "joint stands in a group, expected an item of its own");
      return nullptr;
    }
    return sources::joint(company.shuffle,
                          static_cast<std::size_t>(place - company.members.begin()),
                          end_of(*values_of(i)));
  }

  std::unique_ptr<sources::Way> make_random(std::size_t i, const WayRules& way,
                                            std::uint64_t period) {
    const std::vector<ways::Fraction>& weights =
        way.weights.empty() ? parts_[i].weights : way.weights;
    if (weights.empty()) return sources::random(key_of<Use::order>(i), period);
    if (weights.size() != period) {
      report(i, way.weights_place,
             "weights has " + std::to_string(weights.size()) + " numbers, expected " +
                 std::to_string(period) + ", one for each value");
      return nullptr;
    }
    const auto proportions = ways::Proportions::of_weights(weights);
    if (!proportions) {
      report(i, way.weights_place, "weights: " + proportions.reason());
      return nullptr;
    }
    return sources::weighted(key_of<Use::weights>(i), *proportions,
                             static_cast<std::uint64_t>(layout_.records));
  }

  // --- Fields ------------------------------------------------------------------------------------

  // The field of another item, which `i` asks; null after an error.
  Field* need(std::size_t i, const PlacedText& name, std::string_view key) {
    const auto other = find(name);
    if (!other) {
      report(
          i, name.place,
          std::string(key) + " names " + quoted(name.text) + ", expected an item of the records");
      return nullptr;
    }
    if (parts_[*other].state == State::in_the_making) {
      std::string path;
      const auto begin = std::find(path_.begin(), path_.end(), *other);
      for (auto place = begin; place != path_.end(); ++place) path += names_[*place] + " -> ";
      report(i, name.place,
             std::string(key) + " leads back to the item: " +
                 platform::printable(path + names_[*other]) + ", expected no cycle");
      return nullptr;
    }
    if (parts_[*other].state == State::unmade) {
      if (path_.size() >= most_nested_fields) {
        report(i, name.place,
               "more than " + std::to_string(most_nested_fields) +
                   " items need each other one after the other");
        return nullptr;
      }
      make_field(*other);
    }
    return made_.fields[*other].get();
  }

  void make_field(std::size_t i) {
    parts_[i].state = State::in_the_making;
    path_.push_back(i);
    auto field = parts_[i].source != nullptr ? field_on_way(i) : field_by_record(i);
    if (field != nullptr && values_of(i) != nullptr) add_emptiness(i, *field);
    made_.fields[i] = std::move(field);
    path_.pop_back();
    parts_[i].state = State::made;
  }

  std::unique_ptr<Field> field_on_way(std::size_t i) {
    auto way = make_way(i);
    if (way == nullptr) return nullptr;
    return std::make_unique<Field>(std::move(parts_[i].source), std::move(way));
  }

  // What follows the record itself.
  std::unique_ptr<Field> field_by_record(std::size_t i) {
    const ItemValues* values = values_of(i);
    std::unique_ptr<sources::Source> source;
    if (items_[i].column != nullptr) {
      const std::size_t field = parts_[i].engine_field;
      source = make_engine_source(engine_, field, engine_facts_[field]);
    } else if (values->source == ValueSource::reference) {
      Field* other = need(i, {values->item_name, values->origin}, "item");
      if (other != nullptr) source = sources::make_template_source({{"", other, {}}});
    } else if (const auto* text = std::get_if<TemplateValues>(&values->own)) {
      source = make_template(i, text->text);
    }
    if (source == nullptr) return nullptr;
    return std::make_unique<Field>(std::move(source), sources::forward());
  }

  std::unique_ptr<sources::Source> make_template(std::size_t i, const PlacedText& text) {
    std::vector<sources::TemplatePart> parts;
    if (const auto fault = sources::parse_template(text.text, parts)) {
      report(i, text.place,
             "text, at byte " + std::to_string(fault->offset + 1) + ": " + fault->text);
      return nullptr;
    }
    std::vector<sources::ComposedPart> composed;
    for (sources::TemplatePart& part : parts) {
      Field* field = nullptr;
      if (!part.item.empty()) {
        field = need(i, {part.item, text.place}, "text");
        if (field == nullptr) return nullptr;
      }
      composed.push_back({std::move(part.literal), field, std::move(part.filters)});
    }
    return sources::make_template_source(std::move(composed));
  }

  void add_emptiness(std::size_t i, Field& field) {
    const EmptinessRules& rules = values_of(i)->emptiness;
    for (const OwnKey& key : values_of(i)->own_keys) {
      const bool empties = key.key == "empty" || key.key == "empty_with" || key.key == "when";
      if (empties && !item(i).nullable) {
        report(i, key.place, key.key + " stands beside nullable = false, expected one of the two");
      }
    }
    if (rules.share && rules.share->numerator > 0) {
      field.add_emptiness(sources::empty_share(ways::make_key<Use::empty>(origin(salt_of(i))),
                                               *rules.share,
                                               static_cast<std::uint64_t>(layout_.records)));
    }
    if (rules.with) {
      if (Field* other = need(i, *rules.with, "empty_with")) {
        field.add_emptiness(sources::empty_with(*other));
      }
    }
    for (const Condition& condition : rules.when) {
      if (Field* other = need(i, condition.item, "when")) {
        field.add_emptiness(sources::empty_unless(*other, condition.texts));
      }
    }
  }

  const Layout& layout_;
  const std::vector<PreparedItem>& items_;
  Run& run_;
  std::shared_ptr<EngineRecords> engine_;
  std::vector<FieldFacts> engine_facts_;
  std::vector<std::string> names_;  // UTF-8
  std::unordered_map<std::string_view, std::size_t> places_;
  std::vector<Part> parts_;
  std::map<std::string, Company> groups_;
  std::map<std::string, const LayoutItem*> group_givers_;
  std::map<std::string, Company> joints_;
  std::vector<std::size_t> path_;  // of fields in the making
  LayoutFields made_;
};

}  // namespace

LayoutFields make_fields(const Layout& layout, const std::vector<PreparedItem>& items, Run& run) {
  return FieldMaker(layout, items, run).make();
}

}  // namespace korvex::host
