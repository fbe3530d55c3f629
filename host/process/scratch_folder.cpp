#include "host/process/scratch_folder.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

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

}  // namespace korvex::host
