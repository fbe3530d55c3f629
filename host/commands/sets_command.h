#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

struct SetsOptions {
  std::string name;  // of a set or of a column, empty for all
  std::string language = "en";
  std::optional<std::int32_t> rows;  // else the first few
  bool as_file = false;              // the whole table, as a file of data/sets
};

// Prints which sets come with the program, or the first rows of one. The tables go to `out`,
// messages to `messages`; answers the program's exit status.
int run_sets(const SetsOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
