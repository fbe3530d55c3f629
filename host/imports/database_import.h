#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "host/imports/database_model.h"
#include "host/imports/record_counts.h"
#include "host/imports/table_planner.h"

namespace korvex::host {

struct DatabaseImportOptions {
  TableChoice choice;
  RecordWish wish;
  bool is_plain = false;
  bool is_sqlite = false;
  std::chrono::year_month_day today;
  MakeRecords make_records;
};

struct DatabaseImport {
  std::vector<FileDraft> files;      // the layouts, then their lists
  std::size_t items = 0;             // of all layouts
  std::size_t layouts = 0;           // of the files, from the first on
  std::vector<std::string> remarks;  // one for each line
  std::size_t gaps = 0;
};

// Plans a layout for each table of a database. Throws DatabaseError or Interrupted.
DatabaseImport import_database(Database& database, const DatabaseImportOptions& options);

// Plans a layout for one table or view, whose values are in their order and without guesses. What
// other tables hold stays: keys take their rows.
DatabaseImport import_table(Database& database, const std::string& table, std::int64_t records,
                            bool is_sqlite);

}  // namespace korvex::host
