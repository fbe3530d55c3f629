#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "host/parts/part.h"

namespace korvex::host {

struct GenerateOptions {
  std::string layout;
  std::optional<std::int32_t> records;
  std::optional<Part> part;
  bool force = false;
  std::int32_t output_option = 0;
  bool settings_only = false;
  bool keep_settings = false;
  bool quiet = false;
  bool window = false;
};

// The module's function that generates a data file.
using CreateData = std::int32_t (*)(const char* control_file_path, std::int32_t output_option,
                                    void* parent, std::uint64_t repeat_item_count);

// Reads a layout, writes its settings and generates its data file; or one part of that file, and
// writes no settings and no log. Results go to `out`, messages to
// `messages`; answers the program's exit status.
int run_generate(const GenerateOptions& options, CreateData create_data, std::ostream& out,
                 std::ostream& messages);

}  // namespace korvex::host
