#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/databases/table_schema.h"
#include "host/imports/expression.h"

// Parts of conditions, and which columns of a table they speak of.
namespace korvex::host {

// What a comparison says when its sides change places, and when it is denied.
std::string turned_round(const std::string& sign);
std::string denied(const std::string& sign);

std::optional<int> whole_number(const std::string& text);

// Whether one constant is below another: as numbers where both are, else as texts, which suits
// dates.
bool is_below(const std::string& left, const std::string& right);

// Without the functions that leave the texts of no blanks as they are.
const Expression& stripped(const Expression& expression);

// `now() - interval '18 years'`: the days from now on.
std::optional<int> days_from_now(const Expression& expression);

// A column, and the days or whole numbers that are added to it.
struct ShiftedColumn {
  std::size_t column = 0;
  int shift = 0;
};

// The columns of a table as its conditions name them.
class ConditionColumns {
 public:
  ConditionColumns(const TableSchema& table, Brackets brackets)
      : table_(table), brackets_(brackets) {}

  // What VALUE stands for, in a domain.
  void set_value(std::optional<std::size_t> column) { value_ = column; }

  std::optional<std::size_t> find(const Expression& expression) const;

  // `issued + interval '1 year'`, or a column alone.
  std::optional<ShiftedColumn> find_shifted(const Expression& expression) const;

  // What is no column's name can be a text, between marks that SQLite takes for both.
  std::optional<std::string> constant_of(const Expression& expression) const;

  // All that an expression speaks of, each once.
  void add(const Expression& expression, std::vector<std::size_t>& columns) const;

  // Of a text that is no tree: the columns whose names are among its words.
  void add_named(const std::string& text, std::vector<std::size_t>& columns) const;

  // The columns of `num_nonnulls(a, b)` and of `(a IS NOT NULL) + (b IS NOT NULL)`; of
  // `(a IS NULL) + (b IS NULL)` where those without a value count.
  std::vector<std::size_t> counted(const Expression& expression, bool of_null = false) const;

 private:
  const TableSchema& table_;
  const Brackets brackets_;
  std::optional<std::size_t> value_;
};

}  // namespace korvex::host
