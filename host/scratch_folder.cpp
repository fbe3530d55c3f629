#include "host/scratch_folder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace korvex::host {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() : path_((fs::temp_directory_path() / "korvex-XXXXXX").string()) {
  if (::mkdtemp(path_.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), path_);
  }
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace korvex::host
