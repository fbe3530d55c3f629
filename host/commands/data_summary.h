#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "host/layout/layout.h"

namespace korvex::host {

// What tells a file from the one that stood under its path before.
struct FileVersion {
  bool exists = false;
  struct stat status = {};

  explicit FileVersion(const std::string& path) { exists = ::stat(path.c_str(), &status) == 0; }
  bool is(const FileVersion& other) const {
    return exists == other.exists && status.st_ino == other.status.st_ino &&
           status.st_mtim.tv_sec == other.status.st_mtim.tv_sec &&
           status.st_mtim.tv_nsec == other.status.st_mtim.tv_nsec;
  }

  // When it was last written.
  std::chrono::nanoseconds written() const {
    return std::chrono::seconds(status.st_mtim.tv_sec) +
           std::chrono::nanoseconds(status.st_mtim.tv_nsec);
  }
};

// The line about a data file that was generated: records, bytes, time, path.
void print_data_summary(const Layout& layout, RecordCount records, std::chrono::nanoseconds time,
                        std::ostream& out);

}  // namespace korvex::host
