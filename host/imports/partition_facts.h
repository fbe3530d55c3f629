#pragma once

#include "host/imports/table_facts.h"

namespace korvex::host {

// Narrows a partitioned table's column to what its partitions take together: the listed values, or
// the longest run of ranges without a gap.
void add_partition_facts(const TableSchema& table, const TableRules& rules, TableFacts& facts);

}  // namespace korvex::host
