#pragma once

#include "control/col_main.h"

namespace korvex {

// Whether the settings may go where they belong, asked before they are saved: a failure then would
// end the dialog, and all that was entered with it. Says so when a folder is write-protected, and
// asks the user about a settings file that is: a Yes counts for `main`.
bool may_save(ClColMain& main);

}  // namespace korvex
