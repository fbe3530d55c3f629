#pragma once

#include <iosfwd>
#include <optional>

#include "host/layout/layout.h"
#include "host/process/scratch_folder.h"

namespace korvex::host {

// The layout with a copy of its settings file in the folder, which is also its work folder; nothing
// when there is no folder or no copy, of which the user is told.
std::optional<Layout> copy_layout(const Layout& layout, const ScratchFolder& folder,
                                  std::ostream& messages);

}  // namespace korvex::host
