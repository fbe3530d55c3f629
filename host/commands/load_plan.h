#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "host/databases/table_schema.h"
#include "host/records/moment_form.h"
#include "host/records/prepared_layout.h"

namespace korvex::host {

// Where a layout's items go in a table, in the order of the records' fields.
struct LoadPlan {
  std::vector<std::size_t> columns;
  std::vector<MomentForm> forms;
  std::vector<std::string> item_names;  // UTF-8
};

// Items and columns that do not go together; a line for each.
class PlanError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Finds the column of each item of the records by its name, in its own letters or else in any case.
// Throws PlanError.
LoadPlan plan_load(const PreparedLayout& prepared, const TableSchema& table);

}  // namespace korvex::host
