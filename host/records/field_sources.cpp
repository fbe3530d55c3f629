#include "host/records/field_sources.h"

#include <algorithm>
#include <utility>

#include "host/layout/own_items.h"
#include "host/process/distinct_files.h"
#include "host/records/engine_source.h"
#include "host/records/prepared_layout.h"
#include "host/records/row_values.h"
#include "host/sources/key_source.h"
#include "host/ways/limits.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

class SourceTaker {
 public:
  SourceTaker(FieldPlan& plan, const Run& run, LayoutFamily& family)
      : plan_(plan), run_(run), family_(family), targets_(follow_references(plan.layout())) {}

  void take_source(std::size_t i) {
    const ItemValues* values = plan_.values_of(i);
    if (values == nullptr || is_plain(plan_.item(i))) return;
    const bool has_way = values->leads_through();
    const ItemValues* origin = has_way ? values_at_end(i) : values;
    if (origin == nullptr) return;
    if (const auto* list = std::get_if<ListValues>(&origin->own)) {
      take_rows(i, read_rows(*list, plan_.item(i), plan_.layout(), plan_.errors()));
    } else if (const auto* builtin = std::get_if<BuiltinValues>(&origin->own)) {
      take_rows(i, read_rows(*builtin, plan_.item(i), plan_.layout(), plan_.errors()));
    } else if (const auto* key = std::get_if<KeyValues>(&origin->own)) {
      take_parent(i, *key);
    } else if (has_way) {
      take_course(i, *values);
    }
    if (plan_.part(i).source != nullptr) plan_.part(i).period = *plan_.part(i).source->period();
    if (plan_.part(i).period > ways::most_indices) {
      plan_.report(i, values->way.place, "has more values than a way can lead through");
    }
  }

 private:
  // The values that a chain of references leads to; its own without one.
  const ItemValues* values_at_end(std::size_t i) const {
    const auto place = &plan_.item(i) - plan_.layout().items.data();
    const LayoutItem* end = targets_[static_cast<std::size_t>(place)].end;
    return end == nullptr ? nullptr : end->values.get();
  }

  void take_rows(std::size_t i, std::optional<RowValues> rows) {
    if (!rows) return;
    plan_.part(i).source = std::move(rows->source);
    plan_.part(i).weights = std::move(rows->weights);
    plan_.part(i).rows = std::move(rows->rows);
  }

  void take_parent(std::size_t i, const KeyValues& key) {
    const auto found = family_.find(key.layout);
    if (!found) {
      plan_.report(i, key.layout_place,
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
      plan_.report(i, key.item.place,
                   "item is " + quoted_text(key.item.text) +
                       ", expected an item of the records of " + platform::printable(key.layout));
    } else if (emptiness != nullptr &&
               (emptiness->share || emptiness->with || !emptiness->when.empty())) {
      plan_.report(i, key.item.place,
                   "item is " + quoted_text(key.item.text) +
                       ", which some records leave empty, expected one that always has a value");
    } else if (parent->layout().records == 0) {
      plan_.report(i, key.layout_place,
                   "layout leads to " + platform::printable(key.layout) + ", which has no records");
    } else {
      sources::Field* field =
          parent->fields()[static_cast<std::size_t>(place - items.begin())].get();
      const auto records = static_cast<std::uint64_t>(parent->layout().records);
      plan_.part(i).source = sources::make_key_source({parent, field}, records);
      plan_.part(i).rows = "layout " + settled_path(key.layout);
    }
  }

  void take_course(std::size_t i, const ItemValues& values) {
    if (plan_.column(i) != nullptr) {
      const ItemGenerator& generator = *run_.fields()[plan_.part(i).engine_field];
      plan_.part(i).source = make_course_source(generator, *plan_.column(i), plan_.layout().kind);
    }
    if (plan_.part(i).source != nullptr) return;
    plan_.report(
        i, values.own_keys.front().place,
        values.own_keys.front().key +
            " needs to know how many values there are, which cannot be told here, expected "
            "order \"forward\"");
  }

  FieldPlan& plan_;
  const Run& run_;
  LayoutFamily& family_;
  const std::vector<ReferenceTargets> targets_;  // side by side with the layout's items
};

}  // namespace

void take_sources(FieldPlan& plan, const Run& run, LayoutFamily& family) {
  SourceTaker taker(plan, run, family);
  for (std::size_t i = 0; i < plan.size(); ++i) taker.take_source(i);
}

}  // namespace korvex::host
