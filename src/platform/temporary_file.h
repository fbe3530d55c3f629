#pragma once

#include <ctime>
#include <string>

#include "platform/file.h"

namespace korvex::platform {

// "DG%Y%b%d%H%M%S.TMP" in local time, with English month names whatever the locale:
// DG2007May31081836.TMP.
std::string temporary_name(std::time_t moment);

// A file that is being made, open for writing. The destructor removes it, unless keep() was called.
class TemporaryFile {
 public:
  TemporaryFile() = default;
  ~TemporaryFile() { remove(); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Creates a new file in `folder` that is named after the moment, or after the next second whose
  // name is free.
  FileCause create(const std::string& folder, std::time_t moment = std::time(nullptr));

  // Creates it under a name that has no other use: what an earlier attempt has left is removed.
  FileCause create_as(const std::string& path);

  File& file() { return file_; }

  // Its path; empty for none.
  const std::string& path() const { return path_; }

  // Does not remove it any more, because it is to stay or was renamed.
  void keep() { path_.clear(); }

  // Closes and removes it.
  void remove();

 private:
  File file_;
  std::string path_;
};

}  // namespace korvex::platform
