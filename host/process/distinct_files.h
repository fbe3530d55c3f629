#pragma once

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace korvex::host {

// Where a path leads in the end, whether or not something is there yet: absolute, without links
// and detours.
std::string settled_path(const std::string& path);

// Keeps apart what a command reads and what it writes or removes. Files are the same by what they
// are on the disk, however they are named, and by their names where they are not there yet.
class DistinctFiles {
 public:
  // `role` says what the file is for: "the layout". What is read may be read twice.
  void read(const std::string& path, const std::string& role) { follow(path, role); }

  // What is written where the path leads to. The role that the file has already, nothing when it
  // has none.
  std::optional<std::string> write(const std::string& path, const std::string& role) {
    return follow(path, role);
  }

  // The same for what takes the place of the name itself: what a link there leads to stays.
  std::optional<std::string> replace(const std::string& path, const std::string& role);

 private:
  using Identity = std::pair<dev_t, ino_t>;

  std::optional<std::string> follow(const std::string& path, const std::string& role);
  const std::string& settled_folder_of(const std::string& path);

  std::map<std::string, std::string> folders_;  // most files share one, which is costly to settle
  std::map<std::string, std::string> by_name_;
  std::map<Identity, std::string> by_identity_;
};

}  // namespace korvex::host
