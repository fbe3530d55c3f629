#pragma once

#include <ctime>
#include <string>

#include "platform/file.h"

namespace korvex::platform {

// "DG%Y%b%d%H%M%S.TMP" in local time, with English month names whatever the locale:
// DG2007May31081836.TMP.
std::string temporary_name(std::time_t moment);

// Creates a new file in `folder` named after the moment, or after the next second whose name is
// free, and opens it for writing. `path` receives where it stands.
FileCause create_temporary(const std::string& folder, std::time_t moment, File& file,
                           std::string& path);

}  // namespace korvex::platform
