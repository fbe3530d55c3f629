#pragma once

#include <optional>
#include <string>

#include "host/imports/column_values.h"

namespace korvex::host {

// Why a table can have no more rows.
inline constexpr const char* full_table =
    "its rows have all the values that its unique columns can have";

// What a column of a table is to become.
struct PlannedItem {
  bool is_referenced = false;  // by a key of a table
  bool is_needed = false;      // by a column that must have a value and starts from this one
  bool is_left_out = false;    // no item: the database fills the column
  bool is_empty = false;       // NULL in every record
  bool is_gap = false;         // no value is known, but it must have one
  bool is_nullable = true;
  std::optional<ColumnValues> values;
  std::string empty_share;   // of records without a value; empty for none
  std::string empty_with;    // the column without whose value there is none
  std::string when;          // a condition as TOML has it, in place of a share
  std::string group;         // items of one row
  int repeat_level = 0;      // 0 without repeats
  bool is_combined = false;  // a column of a list of combinations
  std::string reason;        // why its values are what they are, for the comment above it
};

}  // namespace korvex::host
