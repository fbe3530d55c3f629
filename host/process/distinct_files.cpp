#include "host/process/distinct_files.h"

#include <sys/stat.h>

#include <filesystem>

#include "platform/file.h"
#include "platform/path.h"

namespace korvex::host {

namespace fs = std::filesystem;

std::string settled_path(const std::string& path) {
  // A link may lead to where nothing is yet, which the library takes for its end.
  std::string target = path;
  static_cast<void>(platform::resolve_links(target));
  std::error_code failure;
  const fs::path settled = fs::weakly_canonical(fs::absolute(target, failure), failure);
  return failure ? path : settled.string();
}

const std::string& DistinctFiles::settled_folder_of(const std::string& path) {
  const auto [known, is_new] = folders_.try_emplace(platform::folder_of(path));
  if (is_new) known->second = settled_path(known->first);
  return known->second;
}

std::optional<std::string> DistinctFiles::replace(const std::string& path,
                                                  const std::string& role) {
  const std::string name = platform::join_path(settled_folder_of(path), platform::base_name(path));
  const auto [known, is_new] = by_name_.try_emplace(name, role);
  return is_new ? std::nullopt : std::optional(known->second);
}

std::optional<std::string> DistinctFiles::follow(const std::string& path, const std::string& role) {
  std::optional<std::string> other = replace(path, role);
  struct stat status = {};
  if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    const auto [named, has_new_name] = by_name_.try_emplace(settled_path(path), role);
    if (!other && named->second != role) other = named->second;
    if (::stat(path.c_str(), &status) != 0) return other;
  }
  // A device can be written any number of times.
  if (S_ISREG(status.st_mode)) {
    const auto [known, is_new] =
        by_identity_.try_emplace(Identity(status.st_dev, status.st_ino), role);
    if (!is_new) other = known->second;
  }
  return other;
}

}  // namespace korvex::host
