#pragma once

#include <cstddef>
#include <vector>

#include "host/imports/key_plan.h"
#include "host/imports/planned_item.h"
#include "host/imports/table_planner.h"

namespace korvex::host {

// Fills the columns of the plan's row set with a list: rows whose keys all lead to records, whose
// conditions between keys hold, and that differ in each unique set. `items` have values to choose
// from for the columns that are in no key. Answers the number of rows. Throws DatabaseError or
// Interrupted.
std::size_t add_row_list(ImportPlan& plan, std::size_t table, const KeyPlan& keys,
                         std::vector<PlannedItem>& items, PlannedTable& planned);

}  // namespace korvex::host
