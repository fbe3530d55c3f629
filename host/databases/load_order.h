#pragma once

#include <cstddef>
#include <vector>

#include "host/databases/table_schema.h"

namespace korvex::host {

// A table in the order of a load.
struct OrderedTable {
  std::size_t table = 0;  // its place among those that were given
  std::size_t cycle = 0;  // as in LoadedTable
};

struct LoadOrder {
  std::vector<OrderedTable> tables;
  bool defers_keys = false;  // a key that can wait refers to a later row
};

// Each table after those that its foreign keys refer to. In a cycle the keys that can wait do; what
// is a cycle without them, too, has a number. Otherwise the order stays as it is.
LoadOrder order_of_load(const std::vector<TableSchema>& tables);

}  // namespace korvex::host
