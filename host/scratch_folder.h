#pragma once

#include <string>

namespace korvex::host {

// A folder for a command's own files, removed with all of them at the end. Throws
// std::system_error when none can be made.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace korvex::host
