#include "host/records/layout_fields.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "host/records/engine_source.h"
#include "host/records/field_plan.h"
#include "host/records/field_sources.h"
#include "host/records/field_ways.h"
#include "host/records/moment_scale.h"
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

// Makes the fields of a plan that has its sources, each after those that it asks.
class FieldMaker {
 public:
  FieldMaker(FieldPlan& plan, Run& run)
      : plan_(plan),
        ways_(plan),
        engine_(std::make_shared<EngineRecords>(run, plan.layout().kind)),
        engine_facts_(run.field_facts()),
        states_(plan.size()),
        fields_(plan.size()) {}

  std::vector<std::unique_ptr<Field>> make() {
    for (std::size_t i = 0; i < plan_.size(); ++i) {
      if (states_[i] == State::unmade) make_field(i);
    }
    return std::move(fields_);
  }

 private:
  enum class State { unmade, in_the_making, made };

  // The field of another item, which `i` asks; null after an error.
  Field* need(std::size_t i, const PlacedText& name, std::string_view key) {
    const auto other = plan_.find(name.text);
    if (!other) {
      plan_.report(i, name.place,
                   std::string(key) + " names " + quoted_text(name.text) +
                       ", expected an item of the records");
      return nullptr;
    }
    if (states_[*other] == State::in_the_making) {
      std::string path;
      const auto begin = std::find(path_.begin(), path_.end(), *other);
      for (auto place = begin; place != path_.end(); ++place)
        path += plan_.item(*place).name + " -> ";
      plan_.report(i, name.place,
                   std::string(key) + " leads back to the item: " +
                       platform::printable(path + plan_.item(*other).name) + ", expected no cycle");
      return nullptr;
    }
    if (states_[*other] == State::unmade) {
      if (path_.size() >= most_nested_fields) {
        plan_.report(i, name.place,
                     "more than " + std::to_string(most_nested_fields) +
                         " items need each other one after the other");
        return nullptr;
      }
      make_field(*other);
    }
    return fields_[*other].get();
  }

  void make_field(std::size_t i) {
    states_[i] = State::in_the_making;
    path_.push_back(i);
    auto field = plan_.part(i).source != nullptr ? field_on_way(i) : field_by_record(i);
    if (field != nullptr && plan_.values_of(i) != nullptr) add_emptiness(i, *field);
    fields_[i] = std::move(field);
    path_.pop_back();
    states_[i] = State::made;
  }

  std::unique_ptr<Field> field_on_way(std::size_t i) {
    auto way = ways_.way_of(i);
    if (way == nullptr) return nullptr;
    return std::make_unique<Field>(std::move(plan_.part(i).source), std::move(way));
  }

  // What follows the record itself.
  std::unique_ptr<Field> field_by_record(std::size_t i) {
    const ItemValues* values = plan_.values_of(i);
    std::unique_ptr<sources::Source> source;
    if (plan_.column(i) != nullptr) {
      const std::size_t field = plan_.part(i).engine_field;
      source = make_engine_source(engine_, field, engine_facts_[field]);
    } else if (values->source == ValueSource::reference) {
      Field* other = need(i, {values->item_name, values->origin}, "item");
      if (other != nullptr) source = sources::make_template_source({{"", other, {}}});
    } else if (const auto* text = std::get_if<TemplateValues>(&values->own)) {
      source = make_template(i, text->text);
    } else if (const auto* line = std::get_if<LineValues>(&values->own)) {
      auto groups = ways_.named_groups(i, line->of, "of");
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
    const ItemAttributes& attributes = plan_.item(*plan_.find(offset.of.text)).attributes;
    const MomentForm form = moment_form(attributes.attribute);
    const bool is_moment = form != MomentForm::as_it_is;
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
      plan_.report(i, text->place,
                   std::string(key) + " is " + quoted_text(text->text) +
                       ", expected a number with at most " + std::to_string(decimals) +
                       " decimals");
      return nullptr;
    }
    if (distance.least > distance.most) {
      plan_.report(i, offset.to.place, "to is below from, expected the larger number");
      return nullptr;
    }
    return sources::make_offset_source(*other, is_moment ? moment_scale(form) : std::move(units),
                                       plan_.way_key<Use::order>(i), distance);
  }

  std::unique_ptr<sources::Source> make_template(std::size_t i, const PlacedText& text) {
    std::vector<sources::TemplatePart> parts;
    if (const auto fault = sources::parse_template(text.text, parts)) {
      plan_.report(i, text.place,
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
    const EmptinessRules& rules = plan_.values_of(i)->emptiness;
    for (const OwnKey& key : plan_.values_of(i)->own_keys) {
      const bool empties = key.key == "empty" || key.key == "empty_with" || key.key == "when";
      if (empties && !plan_.item(i).nullable) {
        plan_.report(i, key.place,
                     key.key + " stands beside nullable = false, expected one of the two");
      }
    }
    if (rules.share && rules.share->numerator > 0) {
      field.add_emptiness(
          sources::empty_share(plan_.item_key<Use::empty>(i), *rules.share, plan_.records()));
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

  FieldPlan& plan_;
  FieldWays ways_;
  std::shared_ptr<EngineRecords> engine_;
  std::vector<FieldFacts> engine_facts_;
  std::vector<State> states_;
  std::vector<std::size_t> path_;  // of fields in the making
  std::vector<std::unique_ptr<Field>> fields_;
};

}  // namespace

LayoutFields make_fields(const Layout& layout, const std::vector<PreparedItem>& items, Run& run,
                         LayoutFamily& family) {
  FieldPlan plan(layout, items);
  take_sources(plan, run, family);
  LayoutFields made;
  if (plan.errors().empty()) made.fields = FieldMaker(plan, run).make();
  made.errors = std::move(plan.errors());
  return made;
}

}  // namespace korvex::host
