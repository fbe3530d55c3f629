#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "host/databases/table_schema.h"
#include "host/layout/layout_writer.h"

namespace korvex::host {

// What the table asks of a column's values beside their type.
struct ColumnUse {
  bool is_unique = false;
  std::int64_t records = 0;  // that will be asked for
  // What a unique column holds already: its largest number, its largest text of a form.
  std::optional<std::int64_t> largest;
  std::function<std::optional<std::string>(const TextForm&)> largest_text;
};

struct MappedColumn {
  ItemAttributes attributes = {};
  ValuesDraft values;
  std::int64_t distinct_values = 0;
};

// Whether a column's values are a list that its type names.
bool has_listed_values(const ColumnSchema& column);

// Attributes and values of an item for a column without a list; nothing when no item suits the
// type. A unique column gets the whole range of its type, any other one a range for people to read.
std::optional<MappedColumn> map_column(const ColumnSchema& column, const ColumnUse& use);

// Texts of a form, which go on behind the largest that a unique column holds.
MappedColumn map_text_form(const TextForm& form, const ColumnUse& use);

// A character item with room for a list's longest value, in bytes of code page 932, and for what
// the column may hold.
ItemAttributes attributes_for_list(const ColumnSchema& column, std::size_t longest_value);

}  // namespace korvex::host
