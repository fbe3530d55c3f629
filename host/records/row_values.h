#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/layout/layout.h"
#include "host/sources/source.h"
#include "host/ways/fraction.h"

// Values that stand in rows: those of lists and of built-in sets.
namespace korvex::host {

// What an item takes from rows.
struct RowValues {
  std::unique_ptr<sources::Source> source;
  std::vector<ways::Fraction> weights;  // that come with the rows; none: all alike
  std::string rows;                     // names the rows, which the columns of one table share
};

// Nothing after an error, which is appended with its place. All texts fit the item.
std::optional<RowValues> read_rows(const ListValues& list, const LayoutItem& item,
                                   const Layout& layout, std::vector<LayoutError>& errors);
std::optional<RowValues> read_rows(const BuiltinValues& builtin, const LayoutItem& item,
                                   const Layout& layout, std::vector<LayoutError>& errors);

}  // namespace korvex::host
