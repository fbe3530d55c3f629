#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
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

using TextRows = std::vector<std::vector<std::string>>;

// Records of a planned layout: what the files of an import say of it and of those that it leads to.
struct WantedRecords {
  std::vector<FileDraft> files;
  std::string file;  // of these
  const TableSchema& table;
  std::vector<std::string> columns;
  std::size_t most = 0;
};

// Makes them, as the table takes them; none where that fails, and no row with a NULL.
using MakeRecords = std::function<TextRows(const WantedRecords&)>;

// A table with its layout as it is to be written.
struct PlannedTable {
  LayoutDraft layout;
  std::string file;
  std::vector<FileDraft> lists;
  std::vector<std::optional<ItemAttributes>> attributes;  // of the columns that have an item
  std::vector<std::string> remarks;                       // for the person who imports
  std::size_t gaps = 0;                                   // items that need a value from a person
  std::string obstacle;  // why it can have no more rows; empty where it can
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
  MakeRecords make_records = {};
  // Records of planned tables that were made, by the columns that were asked for.
  std::map<std::pair<std::size_t, std::vector<std::string>>, TextRows> made = {};
  std::map<std::size_t, PlannedTable> planned = {};
};

// Plans a table and adds it to those that are planned; the tables that its keys lead to come before
// it, as far as there is no cycle. Throws DatabaseError or Interrupted.
void plan_table(ImportPlan& plan, std::size_t table);

}  // namespace korvex::host
