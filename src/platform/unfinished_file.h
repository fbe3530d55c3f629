#pragma once

#include <string>

#include "platform/file.h"

namespace korvex::platform {

// Removes a file that is being made unless it was finished, whatever way its making ends. Keeps a
// reference to the path.
class UnfinishedFile {
 public:
  explicit UnfinishedFile(const std::string& path) : path_(path) {}
  ~UnfinishedFile() {
    if (!is_finished_) remove_file(path_);
  }
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  void finish() { is_finished_ = true; }

 private:
  const std::string& path_;
  bool is_finished_ = false;
};

}  // namespace korvex::platform
