#pragma once

#include <string>

#include "dialogs/dialogs_module.h"

namespace korvex {

// The functions of libkorvex-dialogs.so, the file beside this library, which is opened the first
// time and then stays. Null when it is missing or does not fit this library; `reason` then says
// which, for a person. A later call tries again.
const korvex_dialogs* load_desktop(std::string& reason);

// The same, ready to show windows: null also without a display.
const korvex_dialogs* open_desktop(std::string& reason);

}  // namespace korvex
