#pragma once

#include <string>

#include "dialogs/dialogs_plugin.h"
#include "platform/user_interface.h"

namespace korvex {

// The user interface of the process: the desktop, or null for the console. KORVEX_UI=console or
// desktop chooses; unset means the desktop where it can be reached. Where the desktop is asked for
// and cannot be reached, standard error says why, once for each process.
platform::UserInterface* choose_interface();

// The functions of libkorvex-dialogs.so, the file beside this library, which is opened the first
// time and then stays. Null when it is missing or does not fit this library; `reason` then says
// which, for a person. A later call tries again.
const korvex_dialogs* load_desktop(std::string& reason);

// The same, ready to show windows: null also without a display.
const korvex_dialogs* open_desktop(std::string& reason);

}  // namespace korvex
