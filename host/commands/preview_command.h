#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

struct PreviewOptions {
  std::string layout;                   // or a folder of layouts
  std::optional<std::int32_t> records;  // else those of the layout, of many the first few
};

// Prints the first records of each layout as a table with the items' names. Writes no file. The
// table goes to `out`, messages to `messages`; answers the program's exit status.
int run_preview(const PreviewOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
