#pragma once

#include <cstdint>
#include <string>

namespace korvex {

// Whether a file can be used, each asked by opening it and closing it again: 0, or the code of the
// one cause that the check is for. Every other cause passes.

std::int32_t check_file_exists(const std::string& path);      // -114
std::int32_t check_file_not_in_use(const std::string& path);  // -115
std::int32_t check_file_readable(const std::string& path);    // -111
std::int32_t check_file_writable(const std::string& path);    // -116

}  // namespace korvex
