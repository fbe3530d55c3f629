#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/imports/key_plan.h"
#include "host/imports/lists.h"
#include "host/imports/planned_item.h"
#include "host/imports/table_planner.h"

namespace korvex::host {

// The values of a list, or of a range of few numbers; none for anything else.
std::vector<std::string> values_in(const ColumnValues& values);

// What rows that are there have in some columns, none of it NULL. Throws DatabaseError or
// Interrupted.
std::set<std::vector<std::string>> held_rows(Database& database, const TableSchema& table,
                                             const std::vector<std::size_t>& columns);

// Columns that are unique together, keys to lists or with listed values of their own, get the
// combinations that no row of the table has yet. Answers how many there are, up to the records that
// are planned; nothing where not all of the columns have values that can be listed. Throws
// DatabaseError or Interrupted.
std::optional<std::uint64_t> combine_lists(const ImportPlan& plan, std::size_t table,
                                           const KeyPlan& keys,
                                           const std::map<std::size_t, TextRows>& lists,
                                           const std::vector<std::size_t>& columns,
                                           std::vector<PlannedItem>& items, PlannedTable& planned);

}  // namespace korvex::host
