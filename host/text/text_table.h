#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// Rows with their columns one below the other, on a terminal or in a file.
class TextTable {
 public:
  // A text and the columns that it takes: a full-width character takes two.
  struct Cell {
    std::string text;
    std::size_t width = 0;
  };

  // A text of plain characters.
  static Cell plain(std::string text);
  // A text in UTF-8; what would act on a terminal shows as an escape.
  static Cell from_utf8(std::string_view text);
  // The same of a text in code page 932.
  static Cell from_code_page(std::string_view text);

  void add(std::vector<Cell> row) { rows_.push_back(std::move(row)); }

  // Columns whose texts are at the right.
  void align_right(std::size_t column) { right_.push_back(column); }

  void print(std::ostream& out) const;

 private:
  std::vector<std::vector<Cell>> rows_;
  std::vector<std::size_t> right_;
};

}  // namespace korvex::host
