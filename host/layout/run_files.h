#pragma once

#include <string>
#include <vector>

#include "host/layout/layout.h"
#include "host/process/distinct_files.h"

// All files that a run of a layout reads, and all that it writes or removes.
namespace korvex::host {

// Adds what a run of the layout reads: the layout itself, its value lists, and `kept_lists`, which
// its settings file names.
void add_read_files(const Layout& layout, const std::vector<std::string>& kept_lists,
                    DistinctFiles& files);

// An error, with its place, for each file that a run would write or remove although it reads it, or
// writes it as something else, too.
std::vector<LayoutError> find_file_conflicts(const Layout& layout,
                                             const std::vector<std::string>& kept_lists);

}  // namespace korvex::host
