#pragma once

#include <cstdlib>

namespace korvex::host {

// The console, unless the user asks for the desktop: by the option, or by KORVEX_UI.
inline void choose_interface(bool window) {
  ::setenv("KORVEX_UI", window ? "desktop" : "console", window ? 1 : 0);
}

}  // namespace korvex::host
