#pragma once

#include <string>
#include <system_error>

namespace korvex::platform {

enum class EditorWait {
  on_terminal,  // until it ends, where standard input is a terminal, which it may need for itself
  never,
};

// Starts $KORVEX_EDITOR (else xdg-open) on the file, never through a shell. Returns the
// system's error, if any.
std::error_code run_editor(const std::string& path, EditorWait wait);

// The command line of run_editor, for a message about it.
std::string editor_command(const std::string& path);

}  // namespace korvex::platform
