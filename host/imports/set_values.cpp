#include "host/imports/set_values.h"

#include <set>
#include <variant>

#include "host/sets/catalogue.h"

namespace korvex::host {

namespace {

// All values of a column, row by row.
std::vector<std::string> column_values(const std::string& name, std::string_view language) {
  std::vector<std::string> values;
  const auto found = sets::find_column(name, language);
  const auto* column = std::get_if<sets::Column>(&found);
  if (column == nullptr) return values;
  const sets::ValueTable table = sets::read_table(*column->table);
  for (std::size_t row = 0; row < table.row_count(); ++row) {
    values.emplace_back(table.value(row, column->column));
  }
  return values;
}

}  // namespace

std::vector<std::string> set_values(const std::string& name, std::string_view language) {
  std::vector<std::string> values;
  std::set<std::string> known = {""};
  for (std::string& value : column_values(name, language)) {
    if (known.insert(value).second) values.push_back(std::move(value));
  }
  return values;
}

bool set_repeats(const std::string& name, std::string_view language) {
  return set_values(name, language).size() < column_values(name, language).size();
}

}  // namespace korvex::host
