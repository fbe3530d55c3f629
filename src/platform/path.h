#pragma once

#include <string>
#include <string_view>

// Paths are bytes as the file system takes them; nothing converts or normalises them.
namespace korvex::platform {

// folder + "/" + name; the name alone when the folder is empty.
std::string join_path(std::string_view folder, std::string_view name);

// What is after the last "/".
std::string_view base_name(std::string_view path);

// The base name without the extension that begins at its last dot.
std::string_view stem(std::string_view path);

// Whether the text is a name in a folder, not a path out of it.
bool is_plain_name(std::string_view text);

// The folder part: "." for a bare name, "/" for a name in the root.
std::string folder_of(std::string_view path);

}  // namespace korvex::platform
