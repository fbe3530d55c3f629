#include "host/engine/output_folders.h"

#include <filesystem>
#include <system_error>

#include "platform/path.h"

namespace korvex::host {

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
