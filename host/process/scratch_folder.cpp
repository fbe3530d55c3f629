#include "host/process/scratch_folder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "format/error_codes.h"
#include "host/layout/layout_messages.h"
#include "platform/file.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::error_code failure;
  const fs::path folder = fs::temp_directory_path(failure);
  if (failure) {
    failure_ = failure.message();
    return;
  }
  std::string name = (folder / "korvex-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    failure_ = std::generic_category().message(errno);
    return;
  }
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  if (!path_.empty()) fs::remove_all(path_, ignored);
}

std::optional<Layout> copy_layout(const Layout& layout, const ScratchFolder& folder,
                                  std::ostream& messages) {
  if (folder.path().empty()) {
    messages << "no folder for temporary files can be made: " << folder.failure() << std::endl;
    return std::nullopt;
  }
  Layout copy = layout;
  copy.settings = folder.path() + "/settings.fif";
  copy.work = folder.path();
  std::error_code failure;
  if (fs::exists(layout.settings, failure)) {
    fs::copy_file(layout.settings, copy.settings, failure);
    // The copy of a write-protected file is not.
    if (!failure) {
      fs::permissions(copy.settings, fs::perms::owner_write, fs::perm_options::add, failure);
    }
  }
  if (!failure || failure == std::errc::no_such_file_or_directory) return copy;
  platform::note_file_error(failure.value());
  messages << platform::printable(layout.settings) << ": "
           << numbered_message(error::cannot_open, layout) << "\nit is copied to "
           << platform::printable(folder.path()) << std::endl;
  return std::nullopt;
}

}  // namespace korvex::host
