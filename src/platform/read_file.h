#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace korvex::platform {

// Reads all that a file has, or that a pipe will have until its writer ends, which may take long: a
// wish to end the process ends it. 0, or the system's error number.
int read_file(const std::string& path, std::string& content);

// Hands over a file in pieces, each with the end of a line or of the file at its end, until `take`
// answers false. What cannot be read ends it, and so does a wish to end the process.
void read_line_pieces(const std::string& path, const std::function<bool(std::string_view)>& take);

}  // namespace korvex::platform
