#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace korvex::host {

inline constexpr std::int32_t default_import_records = 1000;

struct ImportOptions {
  std::string database;
  std::string table;
  std::string output;  // empty or "-" for standard output
  std::int32_t records = default_import_records;
  bool force = false;
};

// Writes a layout for a table of a database, and value lists beside it. All of it or nothing:
// the files get their names at the end. Answers the program's exit status.
int run_import(const ImportOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
