#pragma once

#include <cstddef>
#include <map>
#include <utility>

#include "host/imports/database_model.h"

namespace korvex::host {

// Where a total comes from: a column of the records of another table that belong to the record.
struct SumSource {
  std::size_t table = 0;
  const ForeignKey* key = nullptr;  // of that table
  std::size_t column = 0;
};

// The totals of a database, by their tables and columns, as far as names say so beyond doubt.
using Sums = std::map<std::pair<std::size_t, std::size_t>, SumSource>;
Sums find_sums(const DatabaseModel& model);

}  // namespace korvex::host
