#include "host/engine/run_folders.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "host/layout/failure_text.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/printable_text.h"
#include "values/error_codes.h"

namespace korvex::host {

namespace fs = std::filesystem;

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

void make_folder(const std::string& folder) {
  std::error_code ignored;
  std::filesystem::create_directories(folder, ignored);
}

void make_output_folders(const Layout& layout) {
  for (const std::string& folder :
       {layout.work, platform::folder_of(layout.data), platform::folder_of(layout.settings)}) {
    make_folder(folder);
  }
}

}  // namespace korvex::host
