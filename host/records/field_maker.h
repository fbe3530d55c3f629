#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/records/engine_source.h"
#include "host/records/field_plan.h"
#include "host/records/field_sources.h"
#include "host/records/field_ways.h"
#include "host/sources/field.h"

namespace korvex::host {

// Makes the fields of a layout, each when it is asked for and after those that it asks, in this
// layout and in others of the family.
class FieldMaker {
 public:
  // `self` is the layout as the family knows it: of a copy it is the other one. All must outlive
  // the maker, and `prepared` the fields.
  FieldMaker(PreparedLayout& prepared, LayoutFamily& family, const PreparedLayout& self);

  void make_all();

  // What is wrong with the fields. Answers whether there was anything.
  bool print_errors(std::ostream& messages);

  // Side by side with the items; null for those that nobody needed. They ask each other, so that
  // they belong to one thread.
  std::vector<std::unique_ptr<sources::Field>> take_fields();

  // Items of which some records were tried, and others may have values that do not fit.
  const std::vector<UntoldFit>& untold() const { return untold_; }

  const FieldPlan& plan() const { return plan_; }

 private:
  enum class State { unmade, in_the_making, made };

  struct Making {
    State state = State::unmade;
    std::size_t depth = 1;  // so many fields ask each other from here on
    std::unique_ptr<sources::Field> field;
  };

  void make_field(std::size_t i);

  // The field that item `i` names at `key`: of an item of this layout, or of another. Null after an
  // error.
  sources::Field* need(std::size_t i, const PlacedText& name, std::string_view key);
  sources::Field* need(std::size_t i, SourcePlace place, std::string_view key, FieldMaker& others,
                       std::size_t other);

  std::unique_ptr<sources::Field> field_on_way(std::size_t i);
  std::unique_ptr<sources::Source> source_on_way(std::size_t i);
  std::unique_ptr<sources::Source> source_by_record(std::size_t i);
  std::unique_ptr<sources::Source> make_offset(std::size_t i, const OffsetValues& offset);
  std::unique_ptr<sources::Source> make_children(std::size_t i, const ChildrenValues& values);
  std::shared_ptr<sources::Groups> children_of(std::size_t i, const ChildrenValues& values,
                                               FieldMaker& others);
  std::unique_ptr<sources::Source> make_template(std::size_t i, const TemplateValues& values);
  void add_emptiness(std::size_t i, sources::Field& field);
  void try_records(std::size_t i, sources::Field& field);

  LayoutFamily& family_;
  FieldPlan plan_;
  FieldSources sources_;
  FieldWays ways_;
  std::shared_ptr<EngineRecords> engine_;
  std::vector<FieldFacts> engine_facts_;
  std::vector<Making> makings_;  // side by side with the items
  std::vector<UntoldFit> untold_;
};

}  // namespace korvex::host
