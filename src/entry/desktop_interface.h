#pragma once

#include "platform/user_interface.h"

namespace korvex {

// The user interface of the process: the desktop, or null for the console. KORVEX_UI=console or
// desktop chooses; unset means the desktop where it can be reached. Where the desktop is asked for
// and cannot be reached, standard error says why, once for each process.
platform::UserInterface* choose_interface();

}  // namespace korvex
