#pragma once

#include <cstddef>
#include <vector>

#include "host/imports/key_plan.h"
#include "host/imports/planned_item.h"
#include "host/imports/table_planner.h"

namespace korvex::host {

// Writes what was planned for the items of a table into its layout, with the lists that it needs,
// and says what a person is to look at. Takes the values out of the items.
void write_layout(const ImportPlan& plan, std::size_t table, const KeyPlan& keys,
                  std::vector<PlannedItem>& items, PlannedTable& planned);

}  // namespace korvex::host
