#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace korvex::host {

// Whether a path leads to a folder: then a command is about all of its layouts.
bool is_folder(const std::string& path);

// The layouts that a path means: itself, or those of a folder, by their names. Nothing when a
// folder has none or cannot be read; `messages` says so.
std::optional<std::vector<std::string>> layouts_at(const std::string& path, std::ostream& messages);

}  // namespace korvex::host
