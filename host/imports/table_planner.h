#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/databases/database.h"
#include "host/imports/column_values.h"
#include "host/imports/database_model.h"
#include "host/imports/sums.h"
#include "host/layout/layout_writer.h"

namespace korvex::host {

struct FileDraft {
  std::string name;  // in the folder of the import
  std::string content;
};

// A table with its layout as it is to be written.
struct PlannedTable {
  LayoutDraft layout;
  std::string file;
  std::vector<FileDraft> lists;
  std::vector<std::optional<ItemAttributes>> attributes;  // of the columns that have an item
  std::vector<std::string> remarks;                       // for the person who imports
  std::size_t gaps = 0;                                   // items that need a value from a person
  bool is_full = false;  // its rows have all the values that unique columns can have
};

// What all tables of an import share.
struct ImportPlan {
  const DatabaseModel& model;
  Database& database;
  ImportPeriod period;
  DraftForm form = DraftForm::ways;
  bool is_plain = false;              // without guesses by names
  std::vector<std::string> files;     // of the layouts, by the tables' places
  std::vector<std::int64_t> records;  // that are wished for, and then those that are planned
  Sums sums = {};
  std::map<std::size_t, PlannedTable> planned = {};
};

// Plans a table and adds it to those that are planned; the tables that its keys lead to come before
// it, as far as there is no cycle. Throws DatabaseError or Interrupted.
void plan_table(ImportPlan& plan, std::size_t table);

}  // namespace korvex::host
