#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "host/layout.h"
#include "host/record_reader.h"
#include "host/settings_editor.h"
#include "host/table_schema.h"

namespace korvex::host {

// Where a layout's items go in a table, in the order of the records' fields.
struct LoadPlan {
  std::vector<std::size_t> columns;
  std::vector<FieldForm> forms;
  std::vector<std::string> item_names;  // UTF-8
};

// Items and columns that do not go together; a line for each.
class PlanError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Finds the column of each item by its name, in its own letters or else in any case. Items that the
// records leave out have none. Throws PlanError.
LoadPlan plan_load(const Layout& layout, const std::vector<const LayoutItem*>& left_out,
                   const TableSchema& table);

}  // namespace korvex::host
