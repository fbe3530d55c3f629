#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace korvex::sets {

// Where a table is not what it should be.
struct TableFault {
  std::size_t line = 0;  // from 1
  std::string text;
};

// Rows of texts under named columns. A line is a row, with tabs between its texts, and the first
// line has the names. The column "weight" is none of texts: it says how often each row comes.
class ValueTable {
 public:
  // A text in UTF-8; it has to outlast the table, whose values are in it.
  static std::variant<ValueTable, TableFault> read(std::string_view text);

  // Without the weights.
  std::span<const std::string_view> columns() const { return columns_; }
  std::optional<std::size_t> find_column(std::string_view name) const;

  std::size_t row_count() const { return values_.size() / columns_.size(); }
  std::string_view value(std::size_t row, std::size_t column) const {
    return values_[row * columns_.size() + column];
  }

  // How often each row comes, compared with the others, from 1; none when all come alike.
  std::span<const std::uint32_t> weights() const { return weights_; }

 private:
  // Both answer what is wrong, if anything.
  std::string take_names(std::string_view line);
  std::string add_row(std::string_view line);

  std::vector<std::string_view> columns_;
  std::vector<std::string_view> values_;  // row by row
  std::vector<std::uint32_t> weights_;
  std::optional<std::size_t> weight_place_;  // among the texts of a line
};

}  // namespace korvex::sets
