#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/layout/layout.h"
#include "host/sources/source.h"
#include "host/ways/fraction.h"

// Values that are in rows: those of lists and of built-in sets.
namespace korvex::host {

// Which rows there are. Columns of one table share its rows; in a set of several tables, a row of
// each goes with any of the others.
struct Rows {
  std::string of;     // a list's file, a set or a layout, named apart from all others; empty: none
  std::string table;  // of a set that has several

  bool operator==(const Rows&) const = default;
};

// What an item takes from rows.
struct RowValues {
  std::unique_ptr<sources::Source> source;
  std::vector<ways::Fraction> weights;  // that come with the rows; none: all alike
  Rows rows;
};

// Nothing after an error, which is appended with its place. All texts fit the item.
std::optional<RowValues> read_rows(const ListValues& list, const LayoutItem& item,
                                   const Layout& layout, std::vector<LayoutError>& errors);
std::optional<RowValues> read_rows(const BuiltinValues& builtin, const LayoutItem& item,
                                   const Layout& layout, std::vector<LayoutError>& errors);

}  // namespace korvex::host
