#pragma once

#include <cstdint>

#include "platform/file.h"
#include "values/error_codes.h"

namespace korvex {

// The code of a failed write.
inline ErrorCode write_failure(platform::FileCause cause) {
  return cause == platform::FileCause::disk_full ? error::disk_full : error::cannot_write;
}

}  // namespace korvex
