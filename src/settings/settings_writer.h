#pragma once

#include <cstdint>

#include "platform/file.h"
#include "settings/fmt_com.h"
#include "values/error_codes.h"

namespace korvex {

// Writes all levels of `com` as a settings file: works out every level's place and size,
// stores them in the level records, and writes header, level table and data areas in one pass.
// Items without elements are left out. The file is not closed. -4 when a place does not fit its
// 32-bit field, -26 or -27.
ErrorCode write_settings(ClFmtCom& com, platform::File& file);

}  // namespace korvex
