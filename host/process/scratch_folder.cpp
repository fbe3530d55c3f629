#include "host/process/scratch_folder.h"

#include <cstdlib>
#include <filesystem>

namespace korvex::host {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  const InterruptionsHeld held;
  std::error_code ignored;
  std::string name = (fs::temp_directory_path(ignored) / "korvex-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) return;
  path_ = name;
  removal_.emplace(path_, RemovedOnInterruption::What::folder);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove_all(path_, ignored);
}

std::optional<Layout> copy_layout(const Layout& layout, const std::string& folder) {
  Layout copy = layout;
  copy.settings = folder + "/settings.fif";
  copy.work = folder;
  std::error_code failure;
  if (fs::exists(layout.settings, failure)) {
    fs::copy_file(layout.settings, copy.settings, failure);
    // The copy of a write-protected file is not.
    if (!failure)
      fs::permissions(copy.settings, fs::perms::owner_write, fs::perm_options::add, failure);
  }
  if (failure && failure != std::errc::no_such_file_or_directory) return std::nullopt;
  return copy;
}

}  // namespace korvex::host
