#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/imports/database_model.h"

namespace korvex::host {

// How many records the layouts of a database are to have.
struct RecordWish {
  std::optional<std::int64_t> records;  // of each table
  std::optional<double> scale;          // times the rows that are there
};

// The tables with layouts, each after those that its keys lead to, as far as there is no cycle.
std::vector<std::size_t> tables_in_order(const DatabaseModel& model);

// How many records each table is to have, by its place in the model, before its own limits count.
// Tables that others refer to have fewer than those; small ones that hold names and codes few.
std::vector<std::int64_t> wished_records(const DatabaseModel& model, const RecordWish& wish);

}  // namespace korvex::host
