#pragma once

#include <iosfwd>

#include "host/commands/commands.h"

namespace korvex::host {

// The module's functions that the commands call.
struct ModuleFunctions {
  CreateData create_data;
  CheckRepeatCount check_repeat_count;
  CreateFile create_file;    // settings and data
  CreateFile create_format;  // settings alone
  ReplaceData replace_data;
};

// Runs the command that the arguments name; answers the program's exit status.
ExitStatus run_program(int argc, const char* const* argv, const ModuleFunctions& functions,
                       std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
