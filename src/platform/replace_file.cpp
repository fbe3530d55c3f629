#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <string_view>

#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/interruption.h"
#include "platform/local_time.h"
#include "platform/path.h"
#include "platform/unfinished_file.h"

namespace korvex::platform {

namespace {

// More links in a row than this are a circle.
constexpr int max_links = 40;

// Asks the disk to remember the new name. The rename has happened whatever the answer, so a folder
// that cannot be synchronised is no failure.
void sync_folder(const std::string& folder) {
  const int descriptor = retry_interrupted(
      [&] { return file_calls().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
  if (descriptor < 0) return;
  retry_interrupted([&] { return file_calls().fsync(descriptor); });
  file_calls().close(descriptor);
}

// Gives the new file the permissions of the old one, if there is one.
FileCause take_over_mode(const std::string& path, const std::string& target) {
  struct stat old = {};
  if (file_calls().lstat(target.c_str(), &old) != 0) return FileCause::none;
  const int descriptor = retry_interrupted([&] {
    return file_calls().open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0);
  });
  if (descriptor < 0) return note_file_error(errno);
  const FileCause cause = file_calls().fchmod(descriptor, old.st_mode & 07777) == 0
                              ? FileCause::none
                              : note_file_error(errno);
  file_calls().close(descriptor);
  return cause;
}

FileCause copy_bytes(const std::string& from, File& copy) {
  File source;
  FileCause cause = source.open_for_reading(from, Sharing::shared);
  std::array<char, 64 * 1024> block;
  std::size_t count = block.size();
  while (cause == FileCause::none && count == block.size()) {
    cause = source.read(block.data(), block.size(), count);
    if (cause == FileCause::none) cause = copy.write(block.data(), count);
  }
  if (cause == FileCause::none) cause = copy.sync();
  const FileCause closed = copy.close();
  return cause == FileCause::none ? closed : cause;
}

FileCause move_into_place(const std::string& from, const std::string& target) {
  const FileCause cause = take_over_mode(from, target);
  if (cause != FileCause::none) return cause;
  return file_calls().rename(from.c_str(), target.c_str()) == 0 ? FileCause::none
                                                                : note_file_error(errno);
}

// For a target on another file system: the bytes are copied beside it before they take its name.
FileCause copy_into_place(const std::string& from, const std::string& target) {
  File copy;
  std::string beside;
  FileCause cause = create_temporary(folder_of(target), std::time(nullptr), copy, beside);
  if (cause != FileCause::none) return cause;
  UnfinishedFile unfinished(beside);
  cause = copy_bytes(from, copy);
  if (cause == FileCause::none) cause = move_into_place(beside, target);
  if (cause == FileCause::none) unfinished.finish();
  return cause;
}

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
  return FileCause::generic;
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

FileCause replace_file(const std::string& from, const std::string& to) {
  UnfinishedFile unfinished(from);
  std::string target = to;
  FileCause cause = resolve_links(target);
  if (cause == FileCause::none) cause = take_over_mode(from, target);
  if (cause != FileCause::none) return cause;
  const std::string folder = folder_of(target);
  if (file_calls().rename(from.c_str(), target.c_str()) == 0) {
    unfinished.finish();
  } else {
    cause = errno == EXDEV ? copy_into_place(from, target) : note_file_error(errno);
  }
  if (cause == FileCause::none) sync_folder(folder);
  return cause;
}

}  // namespace korvex::platform
