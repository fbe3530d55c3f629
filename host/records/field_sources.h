#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/layout/own_items.h"
#include "host/records/field_plan.h"
#include "host/records/layout_family.h"
#include "host/records/row_values.h"
#include "host/sources/source.h"
#include "host/ways/fraction.h"
#include "run/run.h"

namespace korvex::host {

// The values that the items of a plan take by a way: lists, sets, records of other layouts, and
// values of the engine. Each is looked for when it is first asked for. What is wrong is reported to
// the plan.
class FieldSources {
 public:
  // What is known of an item's values before its field.
  struct Values {
    std::unique_ptr<sources::Source> source;  // null for the records of a layout
    const PreparedLayout* parent = nullptr;   // that layout
    std::size_t parent_item = 0;              // what the item takes of them
    SourcePlace parent_place;                 // where it says so
    std::uint64_t period = 0;
    std::vector<ways::Fraction> weights;  // that come with the values
    Rows rows;                            // of lists, sets and layouts

    std::uint64_t parent_records() const;
  };

  // The run has the items that have settings; `self` is the layout of the plan as the family knows
  // it. All must outlive the sources.
  FieldSources(FieldPlan& plan, const Run& run, LayoutFamily& family, const PreparedLayout& self)
      : plan_(plan),
        run_(run),
        family_(family),
        self_(self),
        targets_(follow_references(plan.layout())),
        found_(plan.size()) {}

  // Whether a way leads through the item's values. The others follow the record itself.
  bool takes_a_way(std::size_t i) const;

  // Of an item that takes a way; null after an error.
  Values* values(std::size_t i);

  // The layout that item `i` leads to, as the family knows it; null after an error.
  const PreparedLayout* find_layout(std::size_t i, const std::string& file, SourcePlace place);

  // Whether an item takes records of its own layout, which are earlier ones then.
  bool is_into_itself(const Values& values) const { return values.parent == &self_; }

  const PreparedLayout& self() const { return self_; }

 private:
  struct Found {
    bool is_looked_for = false;
    std::unique_ptr<Values> values;
  };

  const ItemValues* values_at_end(std::size_t i) const;
  std::unique_ptr<Values> look_for(std::size_t i);
  std::unique_ptr<Values> look_for_parent(std::size_t i, const KeyValues& key);
  std::unique_ptr<Values> look_for_course(std::size_t i, const ItemValues& values);

  FieldPlan& plan_;
  const Run& run_;
  LayoutFamily& family_;
  const PreparedLayout& self_;
  const std::vector<ReferenceTargets> targets_;  // side by side with the layout's items
  std::vector<Found> found_;
};

}  // namespace korvex::host
