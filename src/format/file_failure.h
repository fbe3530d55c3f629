#pragma once

#include <cstdint>

#include "format/error_codes.h"
#include "platform/file.h"

namespace korvex {

// The code of a failed write.
inline ErrorCode write_failure(platform::FileCause cause) {
  return cause == platform::FileCause::disk_full ? error::disk_full : error::cannot_write;
}

}  // namespace korvex
