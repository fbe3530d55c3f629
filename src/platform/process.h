#pragma once

#include <string>

namespace korvex::platform {

// Starts $KORVEX_EDITOR (else xdg-open) on the file, never through a shell, and does not wait.
// 0, or the system's error number.
int start_editor(const std::string& path);

}  // namespace korvex::platform
