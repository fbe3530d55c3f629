#pragma once

#include <iosfwd>
#include <string>

namespace korvex::host {

struct ReportOptions {
  std::string layout;  // or a folder of layouts
  std::string output;
};

// Writes a page that shows what the records of layouts are like. Messages go to `messages`, the
// page to `out` where the output is "-"; answers the program's exit status.
int run_report(const ReportOptions& options, std::ostream& out, std::ostream& messages);

}  // namespace korvex::host
