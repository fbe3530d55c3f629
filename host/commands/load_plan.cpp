#include "host/commands/load_plan.h"

#include <algorithm>

#include "host/text/any_case.h"
#include "platform/codepage.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

std::size_t find_column(const TableSchema& table, const std::string& name) {
  const auto& columns = table.columns;
  auto found = std::find_if(columns.begin(), columns.end(),
                            [&](const ColumnSchema& column) { return column.name == name; });
  if (found == columns.end()) {
    found = std::find_if(columns.begin(), columns.end(), [&](const ColumnSchema& column) {
      return is_same_in_any_case(column.name, name);
    });
  }
  return static_cast<std::size_t>(found - columns.begin());
}

}  // namespace

LoadPlan plan_load(const PreparedLayout& prepared, const TableSchema& table) {
  const std::string& file = prepared.layout().file;
  LoadPlan plan;
  std::string errors;
  const auto report = [&](const LayoutItem& item, const std::string& what) {
    errors += (errors.empty() ? "" : "\n") + platform::printable(file) + ":" +
              std::to_string(item.place.line) + ": item " +
              platform::printable(plan.item_names.back()) + ": " + what;
  };
  for (const PreparedItem& field : prepared.written()) {
    const LayoutItem& item = *field.item;
    plan.item_names.push_back(item.name);
    const std::size_t column = find_column(table, plan.item_names.back());
    if (column == table.columns.size()) {
      report(item, "the table " + platform::printable(table.name) + " has no column of this name");
      continue;
    }
    if (table.columns[column].is_generated) report(item, "the database computes this column");
    if (std::count(plan.columns.begin(), plan.columns.end(), column) > 0) {
      report(item, "another item goes to this column");
    }
    plan.columns.push_back(column);
    plan.forms.push_back(column_form(item.attributes.attribute, table.columns[column]));
  }
  if (!errors.empty()) throw PlanError(errors);
  return plan;
}

}  // namespace korvex::host
