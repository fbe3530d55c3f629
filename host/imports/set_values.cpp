#include "host/imports/set_values.h"

#include <set>
#include <variant>

#include "host/sets/catalogue.h"

namespace korvex::host {

std::vector<std::string> set_values(const std::string& name, std::string_view language) {
  std::vector<std::string> values;
  const auto found = sets::find_column(name, language);
  const auto* column = std::get_if<sets::Column>(&found);
  if (column == nullptr) return values;
  const sets::ValueTable table = sets::read_table(*column->table);
  std::set<std::string_view> known;
  for (std::size_t row = 0; row < table.row_count(); ++row) {
    const std::string_view value = table.value(row, column->column);
    if (!value.empty() && known.insert(value).second) values.emplace_back(value);
  }
  return values;
}

}  // namespace korvex::host
