#include "host/process/distinct_files.h"

#include <sys/stat.h>

#include <filesystem>

#include "platform/file.h"
#include "platform/path.h"

namespace korvex::host {

namespace fs = std::filesystem;

std::string settled_path(const std::string& path) {
  // A link may lead to where nothing stands yet, which the library takes for its end.
  std::string target = path;
  static_cast<void>(platform::resolve_links(target));
  std::error_code failure;
  const fs::path settled = fs::weakly_canonical(fs::absolute(target, failure), failure);
  return failure ? path : settled.string();
}

std::optional<std::string> DistinctFiles::replace(const std::string& path,
                                                  const std::string& role) {
  const std::string folder = settled_path(platform::folder_of(path));
  const auto [known, is_new] =
      by_name_.try_emplace(platform::join_path(folder, platform::base_name(path)), role);
  return is_new ? std::nullopt : std::optional(known->second);
}

std::optional<std::string> DistinctFiles::follow(const std::string& path, const std::string& role) {
  std::optional<std::string> other = replace(path, role);
  const auto [named, has_new_name] = by_name_.try_emplace(settled_path(path), role);
  if (!other && named->second != role) other = named->second;
  struct stat status = {};
  // A device can be written any number of times.
  if (::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
    const auto [known, is_new] =
        by_identity_.try_emplace(Identity(status.st_dev, status.st_ino), role);
    if (!is_new) other = known->second;
  }
  return other;
}

}  // namespace korvex::host
