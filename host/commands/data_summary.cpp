#include "host/commands/data_summary.h"

#include <cstdio>
#include <ostream>

#include "platform/printable_text.h"

namespace korvex::host {

void print_data_summary(const Layout& layout, RecordCount records, std::chrono::nanoseconds time,
                        std::ostream& out) {
  out << records.number() << " records, ";
  const FileVersion data(layout.data);
  if (data.exists && S_ISREG(data.status.st_mode)) out << data.status.st_size << " bytes, ";
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.3f", std::chrono::duration<double>(time).count());
  out << seconds << " s: " << platform::printable(layout.data) << std::endl;
}

}  // namespace korvex::host
