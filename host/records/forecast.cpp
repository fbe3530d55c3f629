#include "host/records/forecast.h"

#include <algorithm>

#include "host/layout/own_items.h"
#include "host/records/engine_source.h"
#include "host/records/engine_uniqueness.h"
#include "host/sources/uniqueness.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

using sources::Count;

// There is one more where a field of the records can be empty.
std::uint64_t most_values(const FieldFacts& facts) {
  if (!facts.values || !facts.values->distinct) return endless;
  return sum(*facts.values->distinct, facts.values->runs_empty ? 1 : 0);
}

Count values_of(const FieldFacts& facts) {
  if (!facts.values) return {};
  const ItemFacts& item = *facts.values;
  return item.distinct ? Count::of(*item.distinct) : Count{item.different, endless};
}

// What is unknown of all values follows at least from records that differ, or from their number.
Count values_of(const sources::Field& field, std::uint64_t records) {
  const sources::TextFacts& text_facts = field.text_facts();
  if (text_facts.values.is_exact() && text_facts.all_after != sources::endless) {
    return text_facts.values;
  }
  const sources::Field* const one = &field;
  const std::uint64_t different = sources::uniqueness_of({&one, 1}, records).different;
  const std::uint64_t none = field.shape().never_empty ? 0 : 1;
  if (text_facts.cycle && different >= text_facts.cycle->length() && none == 0) {
    return Count::of(text_facts.cycle->length());
  }
  return {std::min(different, records) - std::min(none, records),
          std::min(text_facts.values.most, records)};
}

}  // namespace

Forecast::Forecast(const PreparedLayout& prepared)
    : prepared_(prepared),
      records_(prepared.layout().records.number()),
      engine_fields_(prepared.run().field_facts()) {
  std::size_t field = 0;
  for (const PreparedItem& item : prepared.items()) {
    const FieldFacts* facts = item.column != nullptr ? &engine_fields_[field++] : nullptr;
    facts_.push_back(is_plain(*item.item) ? facts : nullptr);
  }
}

Forecast::Item Forecast::item(std::size_t i) const {
  if (const FieldFacts* facts = facts_[i]) {
    Item item = {values_of(*facts), course_of(*facts), {}};
    if (facts->values) item.passed_ends = facts->values->passed_ends;
    return item;
  }
  const sources::Field& field = *prepared_.fields()[i];
  return {values_of(field, records_), field.course(records_), {}};
}

// Those of the items that the engine makes.
std::vector<const FieldFacts*> Forecast::engine_facts(std::span<const std::size_t> items) const {
  std::vector<const FieldFacts*> facts;
  for (const std::size_t i : items) {
    if (facts_[i] != nullptr) facts.push_back(facts_[i]);
  }
  return facts;
}

Forecast::Set Forecast::set_of_engine(std::vector<const FieldFacts*> facts) const {
  Set set;
  set.uniqueness = uniqueness_of(facts, engine_fields_);
  std::uint64_t combinations = 1;
  for (const FieldFacts* field : facts) combinations = product(combinations, most_values(*field));
  set.combinations = {facts.size() == 1 ? combinations : 0, combinations};
  return set;
}

// An item has no gaps where none of its texts is without a byte.
Forecast::Presence Forecast::presence_of(std::size_t i) const {
  const ItemValues* values = prepared_.items()[i].item->values.get();
  if (values != nullptr && values->source == ValueSource::initial) return {0, 0};
  if (!prepared_.is_plain()) {
    const sources::TextFacts& text_facts = prepared_.fields()[i]->text_facts();
    return {text_facts.end, text_facts.gaps};
  }
  const FieldFacts& facts = *facts_[i];
  if (!facts.values) return {};
  const std::vector<TextRun>& texts = facts.values->texts;
  const bool has_gaps =
      std::any_of(texts.begin(), texts.end(), [](const TextRun& run) { return run.bytes == 0; });
  return {end_of(facts), has_gaps ? sources::endless : 0};
}

Forecast::Set Forecast::set(std::span<const std::size_t> items, EmptyValues empty) const {
  return empty == EmptyValues::same ? set_of_all(items) : set_of_values(items);
}

// Of the records that have a value in all of the items. Two of the first records that are the same
// may both lack one, so that it takes more records until two with values are.
Forecast::Set Forecast::set_of_values(std::span<const std::size_t> items) const {
  Set set = set_of_all(items);
  std::uint64_t end = records_;
  std::uint64_t gaps = 0;
  std::vector<const sources::Field*> fields;
  for (const std::size_t i : items) {
    const Presence presence = presence_of(i);
    end = std::min(end, presence.end);
    gaps = sources::sum(gaps, presence.gaps);
    if (!prepared_.is_plain()) fields.push_back(prepared_.fields()[i].get());
  }
  if (end == records_ && gaps == 0) return set;
  sources::Uniqueness& uniqueness = set.uniqueness;
  uniqueness.different = std::max(uniqueness.different, sources::different_values(fields));
  if (gaps > 0) uniqueness.repeated = sources::sum(set.combinations.most, gaps);
  uniqueness.repeated = std::max(uniqueness.repeated, uniqueness.different);
  // The records from the end on are the same as no other.
  if (uniqueness.different >= end) uniqueness.different = sources::endless;
  if (uniqueness.repeated >= end) uniqueness.repeated = sources::endless;
  return set;
}

Forecast::Set Forecast::set_of_all(std::span<const std::size_t> items) const {
  std::vector<const FieldFacts*> facts = engine_facts(items);
  Set engine = set_of_engine(facts);
  if (facts.size() == items.size()) return engine;
  std::vector<const sources::Field*> fields;
  for (const std::size_t i : items) fields.push_back(prepared_.fields()[i].get());
  Set set;
  set.uniqueness = sources::uniqueness_of(fields, records_);
  set.combinations.most = sources::most_combinations(fields);
  if (fields.size() == 1 && fields.front()->shape().never_empty) {
    set.combinations.least = values_of(*fields.front(), records_).least;
  }
  // Items that the engine repeats tell records apart only together.
  if (!facts.empty()) {
    set.uniqueness.different = std::max(set.uniqueness.different, engine.uniqueness.different);
    set.uniqueness.repeated = std::max(set.uniqueness.repeated, set.uniqueness.different);
  }
  for (std::size_t i = 0; i < items.size(); ++i) {
    set.doubts += (i == 0 ? "" : ", ") +
                  platform::printable(prepared_.items()[items[i]].item->name) + " " +
                  fields[i]->doubt();
  }
  return set;
}

}  // namespace korvex::host
