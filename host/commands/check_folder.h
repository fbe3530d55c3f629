#pragma once

#include <iosfwd>

#include "host/commands/check_command.h"

namespace korvex::host {

// The same for all layouts of a folder together, as tables of one database: whether the records of
// each differ in its unique sets, and whether its keys lead to records of the others. Says in full
// only what does not hold.
int check_folder(const CheckOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
