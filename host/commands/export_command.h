#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "host/parts/part.h"
#include "host/records/record_format.h"

namespace korvex::host {

struct ExportOptions {
  std::string layout;  // or a folder of layouts
  std::string output;  // then a folder, too
  std::optional<std::int32_t> records;
  FormatChoices format;
  std::optional<Part> part;
  bool force = false;
  bool quiet = false;
};

// Writes the records of layouts for another program, a file for each, without touching the layout's
// own files. The output takes its place when it is complete; with `part` that part of it does. Data
// for standard output and the lines about the result go to `out`, messages to `messages`; answers
// the program's exit status.
int run_export(const ExportOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
