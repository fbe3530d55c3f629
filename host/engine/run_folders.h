#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "host/layout/layout.h"
#include "host/process/scratch_folder.h"

namespace korvex::host {

// The layout with a copy of its settings file in the folder, which is also its work folder; nothing
// when there is no folder or no copy, which is reported to the user.
std::optional<Layout> copy_layout(const Layout& layout, const ScratchFolder& folder,
                                  std::ostream& messages);

// Makes a folder, and those that it is in, where they are missing. One that cannot be made shows
// when a file is to be written there.
void make_folder(const std::string& folder);

// Makes the work folder and the folders of the data and settings files where they are missing. One
// that cannot be made shows in the code of the operation that needs it.
void make_output_folders(const Layout& layout);

}  // namespace korvex::host
