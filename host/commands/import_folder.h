#pragma once

#include <iosfwd>

#include "host/commands/import_command.h"

namespace korvex::host {

// The import of a whole database into a folder. Answers the program's exit status, which is that of
// a failure where a layout has a gap; throws what run_import() reports.
int import_folder(const ImportOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
