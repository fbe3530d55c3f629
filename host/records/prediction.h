#pragma once

#include <optional>
#include <string>

#include "generate/repeat_count.h"

namespace korvex::host {

// What the module foretells of a control file in the long form; nothing when it can't.
std::optional<RepeatCount> predict(const std::string& control_path, bool has_repeats);

// The foretold size in words.
std::string predicted_size_text(const RepeatCount& count);

}  // namespace korvex::host
