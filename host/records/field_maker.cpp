#include "host/records/field_maker.h"

#include <algorithm>
#include <ostream>
#include <tuple>
#include <utility>

#include "host/engine/layout_messages.h"
#include "host/process/signals.h"
#include "host/records/layout_family.h"
#include "host/records/moment_form.h"
#include "host/records/prepared_layout.h"
#include "host/records/value_rule.h"
#include "host/records/value_trial.h"
#include "host/sources/decimal.h"
#include "host/sources/record_sources.h"
#include "platform/printable_text.h"

namespace korvex::host {

using sources::Field;
using sources::Source;
using ways::Use;

namespace {

// Fields ask each other, each in a call of its own.
constexpr std::size_t most_nested_fields = 1000;

// Where it is said what an item takes.
SourcePlace taken_place(const ItemValues& values) {
  if (const auto* key = std::get_if<KeyValues>(&values.own)) return key->item.place;
  if (const auto* line = std::get_if<LineValues>(&values.own)) return line->of.place;
  if (const auto* offset = std::get_if<OffsetValues>(&values.own)) return offset->of.place;
  if (const auto* children = std::get_if<ChildrenValues>(&values.own)) {
    return children->item.value_or(children->key).place;
  }
  return values.place;
}

// The steps that lead from an item back to it: each item, and where it names the next one.
std::string text_of_circle(const std::vector<MakingStep>& path, const FieldMaker& maker,
                           std::size_t item) {
  auto step = std::find_if(path.begin(), path.end(), [&](const MakingStep& other) {
    return other.maker == &maker && other.item == item;
  });
  std::string text;
  for (; step != path.end(); ++step) {
    const FieldPlan& plan = step->maker->plan();
    text += plan.item(step->item).name + " (" + plan.layout().file + ':' +
            std::to_string(step->place.line) + ':' + std::to_string(step->place.column) + ") -> ";
  }
  return platform::printable(text + maker.plan().item(item).name);
}

}  // namespace

FieldMaker::FieldMaker(PreparedLayout& prepared, LayoutFamily& family, const PreparedLayout& self)
    : family_(family),
      plan_(prepared.layout(), prepared.items()),
      sources_(plan_, prepared.run(), family, self),
      ways_(plan_, sources_),
      engine_(std::make_shared<EngineRecords>(prepared.run(), prepared.layout().kind)),
      engine_facts_(prepared.run().field_facts()),
      makings_(plan_.size()) {}

void FieldMaker::make_all() {
  for (std::size_t i = 0; i < plan_.size(); ++i) {
    if (makings_[i].state == State::unmade) make_field(i);
  }
}

bool FieldMaker::print_errors(std::ostream& messages) {
  return print_layout_errors(plan_.layout(), plan_.errors(), messages);
}

std::vector<std::unique_ptr<Field>> FieldMaker::take_fields() {
  std::vector<std::unique_ptr<Field>> fields;
  for (Making& making : makings_) fields.push_back(std::move(making.field));
  return fields;
}

Field* FieldMaker::need(std::size_t i, const PlacedText& name, std::string_view key) {
  const auto other = plan_.find(name.text);
  if (other) return need(i, name.place, key, *this, *other);
  plan_.report(
      i, name.place,
      std::string(key) + " names " + quoted_text(name.text) + ", expected an item of the records");
  return nullptr;
}

Field* FieldMaker::need(std::size_t i, SourcePlace place, std::string_view key, FieldMaker& others,
                        std::size_t other) {
  std::vector<MakingStep>& path = family_.path();
  Making& wanted = others.makings_[other];
  path.back().place = place;
  if (wanted.state == State::in_the_making) {
    plan_.report(i, place,
                 std::string(key) + " refers back to the item: " +
                     text_of_circle(path, others, other) + ", expected no cycle");
    return nullptr;
  }
  if (wanted.state == State::unmade && path.size() < most_nested_fields) others.make_field(other);
  if (wanted.state == State::unmade || wanted.depth >= most_nested_fields) {
    plan_.report(i, place,
                 "more than " + std::to_string(most_nested_fields) +
                     " items depend on each other in a chain");
    return nullptr;
  }
  makings_[i].depth = std::max(makings_[i].depth, wanted.depth + 1);
  return wanted.field.get();
}

void FieldMaker::make_field(std::size_t i) {
  makings_[i].state = State::in_the_making;
  family_.path().push_back({this, i, plan_.item(i).place});
  auto field = field_on_way(i);
  if (field != nullptr && plan_.values_of(i) != nullptr) {
    add_emptiness(i, *field);
    try_records(i, *field);
  }
  makings_[i].field = std::move(field);
  family_.path().pop_back();
  makings_[i].state = State::made;
}

std::unique_ptr<Field> FieldMaker::field_on_way(std::size_t i) {
  const bool takes_a_way = sources_.takes_a_way(i);
  auto source = takes_a_way ? source_on_way(i) : source_by_record(i);
  if (source == nullptr) return nullptr;
  auto way = takes_a_way ? ways_.way_of(i) : sources::forward();
  if (way == nullptr) return nullptr;
  if (takes_a_way && sources_.is_into_itself(*sources_.values(i)) && !plan_.item(i).nullable) {
    plan_.report(i, plan_.values_of(i)->place,
                 "has no earlier record for the first one to refer to, but nullable = false, "
                 "expected nullable = true");
  }
  return std::make_unique<Field>(std::move(source), std::move(way));
}

std::unique_ptr<Source> FieldMaker::source_on_way(std::size_t i) {
  FieldSources::Values* values = sources_.values(i);
  if (values == nullptr) return nullptr;
  if (values->parent == nullptr) return std::move(values->source);
  FieldMaker* others = family_.fields_for_others(*values->parent);
  if (others == nullptr) return nullptr;
  Field* field = need(i, values->parent_place, "item", *others, values->parent_item);
  if (field == nullptr) return nullptr;
  return sources::make_key_source(*field, values->period);
}

// What follows the record itself.
std::unique_ptr<Source> FieldMaker::source_by_record(std::size_t i) {
  const ItemValues* values = plan_.values_of(i);
  if (plan_.column(i) != nullptr) {
    const std::size_t field = plan_.engine_field(i);
    return make_engine_source(engine_, field, engine_facts_[field]);
  }
  if (values->source == ValueSource::reference) {
    Field* other = need(i, {values->item_name, values->origin}, "item");
    return other == nullptr ? nullptr : sources::make_template_source({{"", other, {}}});
  }
  if (const auto* text = std::get_if<TemplateValues>(&values->own)) {
    return make_template(i, *text);
  }
  if (const auto* line = std::get_if<LineValues>(&values->own)) {
    auto groups = ways_.named_groups(i, line->of, "of");
    return groups == nullptr ? nullptr : sources::make_line_source(std::move(groups));
  }
  if (const auto* children = std::get_if<ChildrenValues>(&values->own)) {
    return make_children(i, *children);
  }
  const auto* offset = std::get_if<OffsetValues>(&values->own);
  return offset == nullptr ? nullptr : make_offset(i, *offset);
}

std::unique_ptr<Source> FieldMaker::make_children(std::size_t i, const ChildrenValues& values) {
  const PreparedLayout* layout = sources_.find_layout(i, values.layout, values.layout_place);
  FieldMaker* others = layout == nullptr ? nullptr : family_.fields_for_others(*layout);
  if (others == nullptr) return nullptr;
  sources::Children children = {.groups = children_of(i, values, *others)};
  if (children.groups == nullptr) return nullptr;
  // What has no parent's key is no record's child, though it has its place among them.
  const std::size_t key = *others->plan_.find(values.key.text);
  if (others->plan_.values_of(key)->emptiness.is_given()) {
    children.key = need(i, values.key.place, "key", *others, key);
    if (children.key == nullptr) return nullptr;
  }
  sources::FoldRules rules = {.fold = values.fold, .pause = check_interruption};
  if (values.item) {
    const auto item = others->plan_.find(values.item->text);
    const bool is_number = item && is_numeric(others->plan_.item(*item).attributes.attribute);
    if (!item || (values.fold == sources::Fold::sum && !is_number)) {
      plan_.report(i, values.item->place,
                   "item is " + quoted_text(values.item->text) + ", expected " +
                       (item ? "a number" : "an item") + " of the records of " +
                       platform::printable(values.layout));
      return nullptr;
    }
    if (!is_number) rules.comparison = sources::Comparison::as_texts;
    children.field = need(i, values.item->place, "item", *others, *item);
    if (children.field == nullptr) return nullptr;
  }
  const std::int32_t decimals = plan_.item(i).attributes.decimals;
  rules.decimals = std::min(static_cast<unsigned>(decimals), sources::most_decimals);
  return sources::make_children_source(children, rules);
}

// The records that belong to each of this layout; null after an error.
std::shared_ptr<sources::Groups> FieldMaker::children_of(std::size_t i,
                                                         const ChildrenValues& values,
                                                         FieldMaker& others) {
  const auto key = others.plan_.find(values.key.text);
  if (!key || !others.ways_.makes_groups(*key)) {
    plan_.report(i, values.key.place,
                 "key is " + quoted_text(values.key.text) +
                     ", expected an item with type = \"key\" and each in " +
                     platform::printable(values.layout));
    return nullptr;
  }
  const FieldSources::Values* parents = others.sources_.values(*key);
  if (parents == nullptr) return nullptr;
  if (parents->parent != &sources_.self()) {
    plan_.report(i, values.key.place,
                 "key is " + quoted_text(values.key.text) + ", which refers to " +
                     platform::printable(parents->parent->layout().file) +
                     ", expected one that refers to this layout");
    return nullptr;
  }
  return others.ways_.groups_of(*key);
}

std::unique_ptr<Source> FieldMaker::make_offset(std::size_t i, const OffsetValues& offset) {
  Field* other = need(i, offset.of, "of");
  if (other == nullptr) return nullptr;
  const ItemAttributes& attributes = plan_.item(*plan_.find(offset.of.text)).attributes;
  const MomentForm form = moment_form(attributes.attribute);
  const bool is_moment = form != MomentForm::as_it_is;
  const Attribute own = plan_.item(i).attributes.attribute;
  const bool is_like_other = is_moment ? moment_form(own) == form : is_numeric(own);
  if (!is_like_other && !is_character(own)) {
    plan_.report(i, offset.of.place,
                 "of names " + quoted_text(offset.of.text) +
                     ", expected an item with values of the same kind");
    return nullptr;
  }
  const auto decimals = static_cast<unsigned>(is_moment ? 0 : attributes.decimals);
  if (decimals > sources::most_decimals) {
    plan_.report(i, offset.of.place,
                 "of names an item of " + std::to_string(decimals) +
                     " decimals, expected at most " + std::to_string(sources::most_decimals));
    return nullptr;
  }
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
                     ", expected a number with at most " + std::to_string(decimals) + " decimals");
    return nullptr;
  }
  if (distance.least > distance.most) {
    plan_.report(i, offset.to.place, "to is below from, expected the larger number");
    return nullptr;
  }
  return sources::make_offset_source(
      *other, is_moment ? moment_scale(form, plan_.layout().kind) : std::move(units),
      plan_.way_key<Use::order>(i), distance);
}

std::unique_ptr<Source> FieldMaker::make_template(std::size_t i, const TemplateValues& values) {
  std::vector<sources::ComposedPart> composed;
  for (const auto& [part, place] : values.parts) {
    Field* field = nullptr;
    if (!part.item.empty()) {
      field = need(i, {part.item, place}, "text");
      if (field == nullptr) return nullptr;
    }
    composed.push_back({part.literal, field, part.filters});
    if (family_.trial() == Trial::thorough && !part.filters.empty()) {
      sources::look_at_filtered(composed.back());
    }
  }
  return sources::make_template_source(std::move(composed));
}

// What does not fit is found before the first record, as far as that can be.
void FieldMaker::try_records(std::size_t i, Field& field) {
  const LayoutItem& item = plan_.item(i);
  ValueTrial trial(item, plan_.layout(), field, family_.trial());
  if (!is_checked_before(item, plan_.column(i))) {
    if (!plan_.errors().empty()) return;
    if (const auto misfit = trial.find_misfit()) {
      return plan_.report(i, taken_place(*plan_.values_of(i)), *misfit);
    }
    if (!trial.all_fit()) {
      untold_.push_back({plan_.layout().file, plan_.item(i).name});
      return;
    }
  }
  trial.tell_limits();
}

void FieldMaker::add_emptiness(std::size_t i, Field& field) {
  const EmptinessRules& rules = plan_.values_of(i)->emptiness;
  for (const OwnKey& key : plan_.values_of(i)->own_keys) {
    const bool empties = key.key == "empty" || key.key == "empty_with" || key.key == "when";
    if (empties && !plan_.item(i).nullable) {
      plan_.report(i, key.place,
                   key.key + " is given together with nullable = false, expected one of the two");
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
    Field* other = need(i, condition.item, "when");
    if (other == nullptr) continue;
    std::vector<std::string> texts;
    for (const PlacedText& text : condition.texts) {
      texts.push_back(text.text);
      if (other->may_have(text.text)) continue;
      plan_.report(i, text.place,
                   "when has " + quoted_text(text.text) + ", which " +
                       platform::printable(condition.item.text) +
                       " never is, expected one of its values");
    }
    field.add_emptiness(sources::empty_unless(*other, std::move(texts)));
  }
}

}  // namespace korvex::host
