// The types that make one value of those that a record's children have.

#include "host/layout/layout_paths.h"
#include "host/layout/own_text.h"
#include "host/layout/value_types.h"
#include "host/sources/record_sources.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 3> children_keys = {"layout", "key", "item"};

template <sources::Fold fold>
void read_children(const ValuesReading& reading) {
  TableReader& reader = reading.reader;
  ChildrenValues children;
  children.fold = fold;
  reader.require("layout", "the path of the layout whose records belong to those of this one");
  children.layout = read_path(reader, "layout", reading.layout.file);
  children.layout_place = reader.place("layout");
  reader.require("key",
                 "the name of its item that refers to this layout, with type = \"key\" and each");
  children.key = placed_text(reader, "key").value_or(PlacedText{"", reader.place("key")});
  // Records can be counted as such.
  if (fold != sources::Fold::count) reader.require("item", "the name of an item of that layout");
  children.item = placed_text(reader, "item");
  reading.values.own = std::move(children);
}

template <sources::Fold fold>
constexpr ValueType type_of(std::string_view name) {
  return {name, ValueSource::own, Period::none, children_keys, read_children<fold>};
}

}  // namespace

constinit const ValueType sum_type = type_of<sources::Fold::sum>("sum");
constinit const ValueType count_type = type_of<sources::Fold::count>("count");
constinit const ValueType least_type = type_of<sources::Fold::least>("least");
constinit const ValueType most_type = type_of<sources::Fold::most>("most");

}  // namespace korvex::host
