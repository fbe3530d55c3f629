#pragma once

#include <string>

namespace korvex::platform {

// Reads all that a file has, or that a pipe will have until its writer ends, which may take long: a
// wish to end the process ends it. 0, or the system's error number.
int read_file(const std::string& path, std::string& content);

}  // namespace korvex::platform
