#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

inline constexpr std::int32_t default_import_records = 1000;

// What only the import of a whole database takes.
struct WholeDatabaseOptions {
  std::string tables;  // patterns between commas, as all of these
  std::string except;
  std::string keep;
  std::optional<double> scale;
  bool is_plain = false;
};

struct ImportOptions {
  std::string database;
  std::string table;   // empty for all tables
  std::string output;  // of one table: empty or "-" for standard output; of all: a folder
  std::optional<std::int32_t> records;
  bool force = false;
  WholeDatabaseOptions whole;
};

// Writes a layout for a table of a database, and value lists beside it, or a folder of layouts for
// all of its tables. All of it or nothing: the files get their names at the end. Answers the
// program's exit status.
int run_import(const ImportOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
