#pragma once

#include <string>

#include "values/error_codes.h"

namespace korvex {

// Whether a file can be used, each asked by opening it and closing it again: the code of the
// one cause that the check is for. Every other cause passes.

ErrorCode check_file_exists(const std::string& path);      // -114
ErrorCode check_file_not_in_use(const std::string& path);  // -115
ErrorCode check_file_readable(const std::string& path);    // -111
ErrorCode check_file_writable(const std::string& path);    // -116

}  // namespace korvex
