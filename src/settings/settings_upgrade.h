#pragma once

#include <cstdint>
#include <string>

#include "values/error_codes.h"

namespace korvex {

// Rewrites a file of the previous version in place as one of the current version, through a work
// file beside it (the path with ".w" appended), which replaces the old file in one step. A current
// or missing file is left alone.
//
// Codes: -1 memory, -2 the file or the work file cannot be opened, -3 truncated, -5 no settings
// file, -57 of another layout kind, -4 too large for the current version, -26 or -27 writing
// failed. After a failure the file is as it was.
ErrorCode upgrade_settings_file(const std::string& path, LayoutKind layout_kind);

}  // namespace korvex
