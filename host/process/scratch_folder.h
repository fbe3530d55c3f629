#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "host/layout/layout.h"

namespace korvex::host {

// A folder for one command's own files, removed with all of them at the end.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // Empty when no folder can be made.
  const std::string& path() const { return path_; }
  // Why not.
  const std::string& failure() const { return failure_; }

 private:
  std::string path_;
  std::string failure_;
};

// The layout with a copy of its settings file in the folder, which is also its work folder; nothing
// when there is no folder or no copy, of which the user is told.
std::optional<Layout> copy_layout(const Layout& layout, const ScratchFolder& folder,
                                  std::ostream& messages);

}  // namespace korvex::host
