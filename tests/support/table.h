#pragma once

#include <array>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "values/attributes.h"

// Tables of cases as texts: what differs between cases is below each other, a case a line.
namespace korvex::test {

template <std::size_t columns>
using Table = std::vector<std::array<std::string, columns>>;

// The rows of a table, with a vertical bar between their cells; blanks around a cell are left out.
template <std::size_t columns>
Table<columns> table(const std::string& text) {
  Table<columns> rows;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.find_first_not_of(' ') == std::string::npos) continue;
    std::istringstream cells(line + "|");
    std::size_t count = 0;
    for (std::string cell; std::getline(cells, cell, '|'); ++count) {
      if (count == 0) rows.emplace_back();
      if (count == columns) throw std::invalid_argument(line);
      const std::size_t begin = std::min(cell.find_first_not_of(' '), cell.size());
      rows.back()[count] = cell.substr(begin, cell.find_last_not_of(' ') + 1 - begin);
    }
    if (count != columns) throw std::invalid_argument(line);
  }
  return rows;
}

// The numbers of a cell.
inline std::vector<std::int32_t> numbers(const std::string& cell) {
  std::vector<std::int32_t> found;
  std::istringstream words(cell);
  for (std::int32_t number = 0; words >> number;) found.push_back(number);
  return found;
}

// An item of attribute, signed flag, length, digits and decimals; what is left out is 0.
inline ItemAttributes item_of(const std::string& cell) {
  std::vector<std::int32_t> all = numbers(cell);
  all.resize(5);
  return {Attribute{all[0]}, Flag{all[1]}, all[2], all[3], all[4]};
}

}  // namespace korvex::test
