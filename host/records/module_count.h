#pragma once

#include <optional>
#include <string>

#include "host/layout/layout.h"
#include "run/repeat_count.h"

namespace korvex::host {

// What the module predicts of a layout whose settings are a copy (the module deletes those that do
// not fit); nothing when it can't.
std::optional<RepeatCount> module_count(const Layout& copy, bool has_repeats);

// The predicted size in words.
std::string predicted_size_text(const RepeatCount& count);

}  // namespace korvex::host
