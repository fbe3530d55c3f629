#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

struct CountOptions {
  std::string layout;
  std::optional<std::int32_t> records;
  bool window = false;
};

// The module's function that evaluates repeat settings.
using CheckRepeatCount = std::int32_t (*)(const char* control_file_path);

// Says how many records a layout's settings give and how large the file will be: what the module
// predicts, and the size that generating will really write. Changes no file of the user's: it works
// on a copy of the settings file. Results go to `out`, messages to `messages`; answers the
// program's exit status.
int run_count(const CountOptions& options, CheckRepeatCount check, std::ostream& out,
              std::ostream& messages);

}  // namespace korvex::host
