#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/imports/lists.h"
#include "host/imports/table_planner.h"

namespace korvex::host {

// The values of columns in the records of a planned table, at most so many rows; without those
// where one of them is NULL. None where the records can't be made yet, as they follow keys to a
// table that is yet to be planned.
const TextRows& planned_rows(ImportPlan& plan, std::size_t table,
                             const std::vector<std::string>& columns, std::size_t most);

}  // namespace korvex::host
