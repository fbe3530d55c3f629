#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace korvex::host {

struct CheckOptions {
  std::string layout;  // or a folder of layouts
  std::optional<std::int32_t> records;
  std::vector<std::string> unique;  // each a set of item names with commas in between
};

// Says what generating a layout will give, without generating: values of each item and what comes
// behind them, the size of the file, the room on the disk, and whether the records differ in sets
// of items. Writes nothing. Results go to `out`, messages to `messages`; the program's exit status,
// which is 1 also when the room is short or a set is not certainly different.
int run_check(const CheckOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
