#pragma once

#include <cstdlib>
#include <string_view>

namespace korvex::host {

// The console, unless the user asks for the desktop: by the option, or by KORVEX_UI.
inline void choose_interface(bool window) {
  const char* chosen = std::getenv("KORVEX_UI");
  const bool is_chosen = chosen != nullptr && !std::string_view(chosen).empty();
  if (window || !is_chosen) ::setenv("KORVEX_UI", window ? "desktop" : "console", 1);
}

}  // namespace korvex::host
