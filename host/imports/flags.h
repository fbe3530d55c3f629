#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/databases/table_schema.h"
#include "host/imports/planned_item.h"

namespace korvex::host {

// Flags whose name says that they are seldom or mostly true get weights.
void weigh_flags(const TableSchema& table, std::vector<PlannedItem>& items);

// The moment at which a row was deleted, or whatever the verb says, is there where a flag such as
// `active` or `is_deleted` says so.
void follow_flag(const TableSchema& table, std::size_t moment, const std::string& verb,
                 std::vector<PlannedItem>& items);

}  // namespace korvex::host
