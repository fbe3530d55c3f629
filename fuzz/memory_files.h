#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_calls.h"

namespace korvex::fuzz {

// A file system that lives in memory, in place of the system's: a run on hostile input is fast and
// cannot touch a file of the machine, whatever paths the input names. It has two folders, the
// root and the working folder, and takes a file wherever it is created. Links, pipes and devices do
// not exist. One at a time.
class MemoryFiles {
 public:
  MemoryFiles();
  ~MemoryFiles();

  void put(const std::string& path, std::string_view bytes);

  // The file's bytes; empty when there is none.
  std::string get(const std::string& path) const;
  bool exists(const std::string& path) const;

  // Where files are, sorted.
  std::vector<std::string> paths() const;

  // How many descriptors nobody has closed.
  std::size_t open_descriptors() const;

 private:
  platform::FileCallsOverride override_;
};

}  // namespace korvex::fuzz
