#include "host/records/field_sources.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "host/process/distinct_files.h"
#include "host/records/engine_source.h"
#include "host/records/prepared_layout.h"
#include "host/ways/numbers.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

bool is_of_rows(const OwnValues& own) {
  return std::holds_alternative<ListValues>(own) || std::holds_alternative<BuiltinValues>(own) ||
         std::holds_alternative<KeyValues>(own);
}

}  // namespace

std::uint64_t FieldSources::Values::parent_records() const {
  return parent->layout().records.number();
}

bool FieldSources::takes_a_way(std::size_t i) const {
  const ItemValues* values = plan_.values_of(i);
  if (values == nullptr || is_plain(plan_.item(i))) return false;
  return values->leads_through() || is_of_rows(values->own);
}

FieldSources::Values* FieldSources::values(std::size_t i) {
  if (!found_[i].is_looked_for) {
    found_[i].is_looked_for = true;
    found_[i].values = look_for(i);
  }
  return found_[i].values.get();
}

// The values that a chain of references leads to; its own without one.
const ItemValues* FieldSources::values_at_end(std::size_t i) const {
  const auto place = &plan_.item(i) - plan_.layout().items.data();
  const LayoutItem* end = targets_[static_cast<std::size_t>(place)].end;
  return end == nullptr ? nullptr : end->values.get();
}

std::unique_ptr<FieldSources::Values> FieldSources::look_for(std::size_t i) {
  const ItemValues& values = *plan_.values_of(i);
  const ItemValues* origin = values.leads_through() ? values_at_end(i) : &values;
  std::unique_ptr<Values> found;
  const auto take_rows = [&](std::optional<RowValues> rows) {
    if (!rows) return;
    found = std::make_unique<Values>();
    found->source = std::move(rows->source);
    found->weights = std::move(rows->weights);
    found->rows = std::move(rows->rows);
    found->period = *found->source->period();
  };
  if (origin == nullptr || !is_of_rows(origin->own)) {
    found = look_for_course(i, values);
  } else if (const auto* list = std::get_if<ListValues>(&origin->own)) {
    take_rows(read_rows(*list, plan_.item(i), plan_.layout(), plan_.errors()));
  } else if (const auto* builtin = std::get_if<BuiltinValues>(&origin->own)) {
    take_rows(read_rows(*builtin, plan_.item(i), plan_.layout(), plan_.errors()));
  } else {
    found = look_for_parent(i, std::get<KeyValues>(origin->own));
  }
  if (found != nullptr && found->period > ways::most_indices) {
    plan_.report(i, values.way.place, "has more values than a way can lead through");
    return nullptr;
  }
  return found;
}

const PreparedLayout* FieldSources::find_layout(std::size_t i, const std::string& file,
                                                SourcePlace place) {
  const auto layout = family_.find(file);
  if (layout) return *layout;
  plan_.report(i, place, "layout names " + platform::printable(file) + layout.reason());
  return nullptr;
}

std::unique_ptr<FieldSources::Values> FieldSources::look_for_parent(std::size_t i,
                                                                    const KeyValues& key) {
  const PreparedLayout* parent = find_layout(i, key.layout, key.layout_place);
  if (parent == nullptr) return nullptr;
  const auto item = parent->find_item(key.item.text);
  if (!item) {
    plan_.report(i, key.item.place,
                 "item is " + quoted_text(key.item.text) + ", expected an item of the records of " +
                     platform::printable(key.layout));
    return nullptr;
  }
  const ItemValues* values = parent->items()[*item].item->values.get();
  if (values != nullptr && values->emptiness.is_given()) {
    plan_.report(i, key.item.place,
                 "item is " + quoted_text(key.item.text) +
                     ", which some records leave empty, expected one that always has a value");
    return nullptr;
  }
  if (parent->layout().records == RecordCount() && parent != &self_ && plan_.records() > 0) {
    plan_.report(i, key.layout_place,
                 "layout names " + platform::printable(key.layout) + ", which has no records");
    return nullptr;
  }
  auto found = std::make_unique<Values>();
  found->parent = parent;
  found->parent_item = *item;
  found->parent_place = key.item.place;
  // A way over no records is never taken, but it must be valid.
  found->period = std::max<std::uint64_t>(1, found->parent_records());
  found->rows.of = "layout " + settled_path(key.layout);
  return found;
}

std::unique_ptr<FieldSources::Values> FieldSources::look_for_course(std::size_t i,
                                                                    const ItemValues& values) {
  auto found = std::make_unique<Values>();
  if (plan_.column(i) != nullptr) {
    const ItemGenerator& generator = *run_.fields()[plan_.engine_field(i)];
    found->source = make_course_source(generator, plan_.layout().kind);
  }
  if (found->source == nullptr) {
    plan_.report(i, values.own_keys.front().place,
                 values.own_keys.front().key +
                     " needs to know how many values there are, which is unknown here, expected "
                     "order \"forward\"");
    return nullptr;
  }
  found->period = *found->source->period();
  return found;
}

}  // namespace korvex::host
