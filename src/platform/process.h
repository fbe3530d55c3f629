#pragma once

#include <string>

namespace korvex::platform {

// Starts $KORVEX_EDITOR (else xdg-open) on the file, never through a shell, and waits until it
// ends: an editor of the terminal needs the terminal for itself. 0, or the system's error number.
int run_editor(const std::string& path);

}  // namespace korvex::platform
