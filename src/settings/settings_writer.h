#pragma once

#include <cstdint>
#include <string>

#include "platform/file.h"
#include "settings/fmt_com.h"
#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

// Writes all levels of `com` as a settings file: works out every level's place and size,
// stores them in the level records, and writes header, level table and data areas in one pass.
// Items without elements are left out. The file is not closed. -4 when a place does not fit its
// 32-bit field, -26 or -27.
ErrorCode write_settings(ClFmtCom& com, platform::File& file);

// The work file of an upgrade: the path with ".w" appended.
std::string upgrade_path(const std::string& path);

// Rewrites a file of the previous version in place as one of the current version, through a work
// file beside it, which replaces the old file in one step. A current or missing file is left alone.
//
// Codes: -1 memory, -2 the file or the work file cannot be opened, -3 truncated, -5 no settings
// file, -57 of another layout kind, -4 too large for the current version, -26 or -27 writing
// failed. After a failure the file is as it was.
ErrorCode upgrade_settings_file(const std::string& path, LayoutKind layout_kind);

}  // namespace korvex
