#include "host/records/layout_fields.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "host/layout/own_items.h"
#include "host/process/distinct_files.h"
#include "host/records/engine_source.h"
#include "host/records/moment_scale.h"
#include "host/records/prepared_layout.h"
#include "host/records/row_values.h"
#include "host/sources/key_source.h"
#include "host/sources/line_source.h"
#include "host/sources/offset_source.h"
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
  FieldMaker(const Layout& layout, const std::vector<PreparedItem>& items, Run& run,
             LayoutFamily& family)
      : layout_(layout),
        items_(items),
        run_(run),
        family_(family),
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
    std::uint64_t period = 0;                 // of the source
    std::vector<ways::Fraction> weights;      // that come with the source
    std::string rows;                         // of lists, sets and layouts
    std::shared_ptr<sources::Groups> groups;  // of a key with each, once they are needed
  };

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
    } else if (const auto* key = std::get_if<KeyValues>(&origin->own)) {
      take_parent(i, *key);
    } else if (has_way) {
      take_course(i, *values);
    }
    if (parts_[i].source != nullptr) parts_[i].period = *parts_[i].source->period();
    if (parts_[i].period > ways::most_indices) {
      report(i, values->way.place, "has more values than a way can lead through");
    }
  }

  void take_parent(std::size_t i, const KeyValues& key) {
    const auto found = family_.find(key.layout);
    if (!found) {
      report(i, key.layout_place,
             "layout leads to " + platform::printable(key.layout) + found.reason());
      return;
    }
    const std::shared_ptr<PreparedLayout>& parent = *found;
    const auto& items = parent->items();
    const auto place = std::find_if(items.begin(), items.end(), [&](const PreparedItem& other) {
      return other.item->name == key.item.text;
    });
    const EmptinessRules* emptiness = nullptr;
    if (place != items.end() && place->item->values) emptiness = &place->item->values->emptiness;
    if (place == items.end()) {
      report(i, key.item.place,
             "item is " + quoted(key.item.text) + ", expected an item of the records of " +
                 platform::printable(key.layout));
    } else if (emptiness != nullptr &&
               (emptiness->share || emptiness->with || !emptiness->when.empty())) {
      report(i, key.item.place,
             "item is " + quoted(key.item.text) +
                 ", which some records leave empty, expected one that always has a value");
    } else if (parent->layout().records == 0) {
      report(i, key.layout_place,
             "layout leads to " + platform::printable(key.layout) + ", which has no records");
    } else {
      Field* field = parent->fields()[static_cast<std::size_t>(place - items.begin())].get();
      const auto records = static_cast<std::uint64_t>(parent->layout().records);
      parts_[i].source = sources::make_key_source({parent, field}, records);
      parts_[i].rows = "layout " + settled_path(key.layout);
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
    Group& group = groups_.try_emplace(values.group->text, Group{i, {}, {}}).first->second;
    if (parts_[i].rows.empty() || parts_[i].rows != parts_[group.first].rows) {
      report(i, values.group->place,
             "group " + quoted(values.group->text) +
                 " has items of other rows, expected items of one list, set or layout");
    } else if (values.way.is_given() && group.way_giver) {
      report(i, values.way.place,
             "group " + quoted(values.group->text) + " has the way of item " +
                 platform::printable(names_[*group.way_giver]) + " already, expected one way");
    } else if (values.way.is_given()) {
      group.way_giver = i;
    }
  }

  // The item whose way another one takes: that of its group, or its own.
  std::size_t way_giver(std::size_t i) const {
    const std::optional<PlacedText>& name = values_of(i)->group;
    const auto group = name ? groups_.find(name->text) : groups_.end();
    return group == groups_.end() ? i : group->second.way_giver.value_or(i);
  }

  // The groups that a key with each makes of the records; null for any other item, and after an
  // error.
  std::shared_ptr<sources::Groups> groups_of(std::size_t i) {
    if (values_of(i) == nullptr) return nullptr;
    const std::size_t giver = way_giver(i);
    const auto* key = std::get_if<KeyValues>(&values_of(giver)->own);
    if (key == nullptr || !key->each) return nullptr;
    if (parts_[giver].groups == nullptr) {
      const auto sizes = ways::GroupSizes::make(key_of<Use::each>(giver),
                                                static_cast<std::uint64_t>(layout_.records),
                                                parts_[giver].period, *key->each);
      if (!sizes) {
        report(giver, key->each_place, "each: " + sizes.reason());
        return nullptr;
      }
      parts_[giver].groups = std::make_shared<sources::Groups>(*sizes);
    }
    return parts_[giver].groups;
  }

  // The groups of a key that an item names.
  std::shared_ptr<sources::Groups> named_groups(std::size_t i, const PlacedText& name,
                                                std::string_view key) {
    const auto other = find(name);
    const std::size_t errors_before = made_.errors.size();
    auto groups = other ? groups_of(*other) : nullptr;
    if (groups == nullptr && made_.errors.size() == errors_before) {
      report(i, name.place,
             std::string(key) + " is " + quoted(name.text) +
                 ", expected an item of type \"key\" with each");
    }
    return groups;
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

  // Items of a group share their way.
  std::shared_ptr<sources::Way> way_of(std::size_t i) {
    const ItemValues& values = *values_of(i);
    if (!values.group) return make_way(i);
    std::shared_ptr<sources::Way>& way = groups_[values.group->text].way;
    if (way == nullptr) way = make_way(way_giver(i));
    return way;
  }

  std::unique_ptr<sources::Way> make_way(std::size_t i) {
    const ItemValues& values = *values_of(i);
    const WayRules& way = values.way;
    const std::uint64_t period = parts_[i].period;
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
    return sources::zipf(key_of<Use::order>(i), period, way.skew);
  }

  std::unique_ptr<sources::Way> make_shuffled(std::size_t i, const WayRules& way,
                                              std::uint64_t period) {
    const ItemValues& values = *values_of(i);
    if (way.joint) return make_joint(i, way);
    if (way.within) {
      auto groups = named_groups(i, *way.within, "within");
      if (groups == nullptr) return nullptr;
      return sources::shuffled_within(key_of<Use::order>(i), period, std::move(groups));
    }
    return sources::shuffled(key_of<Use::order>(i), period, end_of(values));
  }

  std::unique_ptr<sources::Way> make_joint(std::size_t i, const WayRules& way) {
    Joint& company = joints_[way.joint->text];
    if (company.shuffle == nullptr) {
      std::vector<std::uint64_t> periods;
      for (const std::size_t member : company.members) {
        periods.push_back(parts_[member].period);
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
    auto way = way_of(i);
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
    } else if (const auto* line = std::get_if<LineValues>(&values->own)) {
      auto groups = named_groups(i, line->of, "of");
      if (groups != nullptr) source = sources::make_line_source(std::move(groups));
    } else if (const auto* offset = std::get_if<OffsetValues>(&values->own)) {
      source = make_offset(i, *offset);
    }
    if (source == nullptr) return nullptr;
    return std::make_unique<Field>(std::move(source), sources::forward());
  }

  std::unique_ptr<sources::Source> make_offset(std::size_t i, const OffsetValues& offset) {
    Field* other = need(i, offset.of, "of");
    if (other == nullptr) return nullptr;
    const ItemAttributes& attributes = item(*find(offset.of)).attributes;
    const FieldForm form = moment_form(attributes.attribute);
    const bool is_moment = form != FieldForm::as_it_is;
    const auto decimals = static_cast<unsigned>(is_moment ? 0 : attributes.decimals);
    auto units = sources::number_scale(decimals);
    sources::Distance distance;
    for (const auto& [text, number, key] :
         {std::tuple{&offset.from, &distance.least, "from"}, {&offset.to, &distance.most, "to"}}) {
      const auto read = units->read(text->text);
      if (read) {
        *number = *read;
        continue;
      }
      report(i, text->place,
             std::string(key) + " is " + quoted(text->text) + ", expected a number with at most " +
                 std::to_string(decimals) + " decimals");
      return nullptr;
    }
    if (distance.least > distance.most) {
      report(i, offset.to.place, "to is below from, expected the larger number");
      return nullptr;
    }
    return sources::make_offset_source(*other, is_moment ? moment_scale(form) : std::move(units),
                                       key_of<Use::order>(i), distance);
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
  LayoutFamily& family_;
  std::shared_ptr<EngineRecords> engine_;
  std::vector<FieldFacts> engine_facts_;
  std::vector<std::string> names_;  // UTF-8
  std::unordered_map<std::string_view, std::size_t> places_;
  std::vector<Part> parts_;
  std::map<std::string, Group> groups_;
  std::map<std::string, Joint> joints_;
  std::vector<std::size_t> path_;  // of fields in the making
  LayoutFields made_;
};

}  // namespace

LayoutFields make_fields(const Layout& layout, const std::vector<PreparedItem>& items, Run& run,
                         LayoutFamily& family) {
  return FieldMaker(layout, items, run, family).make();
}

}  // namespace korvex::host
