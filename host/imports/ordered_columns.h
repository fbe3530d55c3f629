#pragma once

#include <vector>

#include "host/imports/database_model.h"
#include "host/imports/planned_item.h"

namespace korvex::host {

// Makes columns that have to follow others (`end_date >= start_date`) offsets from them.
void follow_orders(const std::vector<ColumnOrder>& orders, const ImportedTable& table,
                   std::vector<PlannedItem>& items);

}  // namespace korvex::host
