#pragma once

#include <string>

namespace korvex::platform {

// Starts $KORVEX_EDITOR (else xdg-open) on the file, never through a shell. On a terminal it
// waits until the editor ends, which may need the terminal for itself; elsewhere it does not. 0, or
// the system's error number.
int run_editor(const std::string& path);

}  // namespace korvex::platform
