#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

class TableReader;

// A path as a layout gives it, seen from where the program runs: a relative one is relative to the
// layout file's folder. Nothing is resolved or checked on disk.
std::string path_beside_layout(std::string_view layout_file, std::string_view path);

// The layout file's folder, "." for a layout in the working folder.
std::string layout_folder(std::string_view layout_file);

// The data file's path with the extension of settings files.
std::string default_settings_path(std::string_view data_path);

// The path at the key, seen from where the program runs; empty, and reported unless absent, when
// there is none that can be used.
std::string read_path(TableReader& reader, std::string_view key, const std::string& layout_file);

// Whether a path leads to a folder: then a command is about all of its layouts.
bool is_folder(const std::string& path);

// The layouts that a path means: itself, or those of a folder, by their names. Nothing when a
// folder has none or cannot be read; `messages` says so.
std::optional<std::vector<std::string>> layouts_at(const std::string& path, std::ostream& messages);

}  // namespace korvex::host
