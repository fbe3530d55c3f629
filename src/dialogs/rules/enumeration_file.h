#pragma once

#include <optional>
#include <string>

#include "dialogs/rules/messages.h"

namespace korvex {

// Asks the user for an enumeration file; a path that settings cannot hold is refused.
std::optional<std::string> ask_for_enumeration_file(const std::string& folder);

// Opens an enumeration file in the user's editor, when it can be read and written by this user and
// nobody else has it open; says so otherwise.
void open_enumeration_file(const std::string& path, const Messages& messages);

}  // namespace korvex
