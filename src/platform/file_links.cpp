#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <string_view>

#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/path.h"

namespace korvex::platform {

namespace {

// More links in a row than this are a circle.
constexpr int max_links = 40;

}  // namespace

FileCause resolve_links(std::string& path) {
  for (int i = 0; i < max_links; ++i) {
    struct stat status = {};
    if (file_calls().lstat(path.c_str(), &status) != 0) {
      return errno == ENOENT ? FileCause::none : cause_from_errno(errno);
    }
    if (!S_ISLNK(status.st_mode)) return FileCause::none;
    std::array<char, PATH_MAX> target;
    const ssize_t size = file_calls().readlink(path.c_str(), target.data(), target.size());
    if (size < 0) return cause_from_errno(errno);
    const std::string_view leads_to(target.data(), static_cast<std::size_t>(size));
    path = leads_to.starts_with('/') ? std::string(leads_to) : join_path(folder_of(path), leads_to);
  }
  return note_file_error(ELOOP);
}

bool exists(const std::string& path) {
  std::string target = path;
  struct stat status = {};
  return resolve_links(target) == FileCause::none &&
         file_calls().lstat(target.c_str(), &status) == 0;
}

bool is_write_protected(const std::string& path) {
  std::string target = path;
  struct stat status = {};
  if (resolve_links(target) != FileCause::none) return false;
  if (file_calls().lstat(target.c_str(), &status) != 0) return false;
  constexpr mode_t writable_by_anyone = S_IWUSR | S_IWGRP | S_IWOTH;
  const bool is_read_only = S_ISREG(status.st_mode) && (status.st_mode & writable_by_anyone) == 0;
  return is_read_only || ::access(target.c_str(), W_OK) != 0;
}

FileCause remove_target(const std::string& path) {
  std::string target = path;
  const FileCause cause = resolve_links(target);
  return cause == FileCause::none ? remove_file(target) : cause;
}

}  // namespace korvex::platform
