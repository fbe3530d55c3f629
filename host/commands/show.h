#pragma once

#include <iosfwd>
#include <string>

namespace korvex::host {

// Prints a control file, a Format Information file or a log file in readable form; which of them it
// is, its bytes tell. Answers what is wrong with the file, or an empty text; what could be read
// before a fault has then been printed.
std::string show_file(const std::string& path, std::ostream& out);

}  // namespace korvex::host
