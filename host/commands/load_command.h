#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

struct LoadOptions {
  std::string layout;  // or a folder of layouts
  std::string database;
  std::string table;  // empty for the layout's own
  std::optional<std::int32_t> records;
  bool truncate = false;  // the tables are emptied first
  bool yes = false;       // nobody is asked whether they may be
  bool no_analyze = false;
  bool quiet = false;
};

// Generates the records of a layout into a table of a database, or those of all layouts of a folder
// into theirs, in one transaction: all of them or none. Writes no data file, and leaves the
// layouts' settings files as they are. Questions are answered from `in`, null where nobody can be
// asked. Results go to `out`, messages to `messages`; answers the program's exit status.
int run_load(const LoadOptions& options, std::istream* in, std::ostream& out,
             std::ostream& messages);

}  // namespace korvex::host
