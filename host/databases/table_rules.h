#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What a database says of a table beside columns and keys: what it asks of the rows, and what it
// puts into them itself. Texts are UTF-8.
namespace korvex::host {

// A table or something like it, as read_schema() takes its name.
struct ListedTable {
  std::string name;
  std::string left_out;  // why it can't be filled on its own; empty for one that can
};

// How a type is made of others, as far as texts of its values need that.
struct TypeShape {
  enum class Kind { plain, array, range, multirange, composite, choice };
  Kind kind = Kind::plain;
  std::string name;                  // plain: the type's own
  std::vector<TypeShape> parts;      // array and ranges: of what; composite: its columns
  std::vector<std::string> choices;  // choice
};

// Columns are named by their places in the table.
struct DomainCheck {
  std::size_t column = 0;
  std::string text;  // with VALUE for the column
};

// The bounds of the partitions that rows of a table go to, by one of its columns.
struct PartitionBound {
  std::size_t column = 0;
  std::string text;  // as in `FOR VALUES FROM ('2020-01-01') TO ('2021-01-01')`
};

struct ColumnShape {
  std::size_t column = 0;
  TypeShape shape;
};

// A unique index over expressions, or over a part of the rows.
struct UniqueIndex {
  std::vector<std::string> members;  // columns and expressions in SQL
  std::string condition;             // of the rows that count; empty for all
};

struct TableRules {
  std::vector<std::string> checks;  // conditions in SQL
  std::vector<DomainCheck> domain_checks;
  std::vector<PartitionBound> partitions;
  std::vector<UniqueIndex> unique_indexes;  // beside the unique sets of the schema
  std::vector<std::size_t> filled;          // columns that a trigger gives values to
  std::vector<ColumnShape> shapes;          // of columns whose type is unknown otherwise
};

}  // namespace korvex::host
