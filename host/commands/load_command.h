#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

struct LoadOptions {
  std::string layout;
  std::string database;
  std::string table;  // empty for the layout's own
  std::optional<std::int32_t> records;
  bool quiet = false;
};

// Generates the records of a layout into a table of a database, in one transaction: all of them or
// none. Writes no data file, and leaves the layout's settings file as it is. Results go to `out`,
// messages to `messages`; answers the program's exit status.
int run_load(const LoadOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
