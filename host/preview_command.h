#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

namespace korvex::host {

inline constexpr std::int32_t default_preview = 20;

struct PreviewOptions {
  std::string layout;
  std::int32_t records = default_preview;
};

// Prints the first records of a layout as a table with the items' names. Writes no file. The table
// goes to `out`, messages to `messages`; answers the program's exit status.
int run_preview(const PreviewOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
