#pragma once

#include <optional>
#include <string>

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

}  // namespace korvex::host
