#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/file.h"
#include "platform/file_calls.h"
#include "platform/path.h"

namespace korvex::platform {

namespace {

// What the path leads to when every link is followed; the path itself when that is nothing yet.
std::string resolve(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(
      file_calls().realpath(path.c_str(), nullptr), &std::free);
  return resolved ? std::string(resolved.get()) : path;
}

FileCause sync_folder(const std::string& folder) {
  const int descriptor = file_calls().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
  if (descriptor < 0) return cause_from_errno(errno);
  const bool synced = file_calls().fsync(descriptor) == 0;
  // Some file systems refuse to synchronise a folder; the rename itself has then succeeded.
  const FileCause cause =
      synced || errno == EINVAL || errno == EROFS ? FileCause::none : cause_from_errno(errno);
  file_calls().close(descriptor);
  return cause;
}

FileCause change_mode(const std::string& path, mode_t mode) {
  const int descriptor =
      file_calls().open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0);
  if (descriptor < 0) return cause_from_errno(errno);
  const FileCause cause =
      file_calls().fchmod(descriptor, mode) == 0 ? FileCause::none : cause_from_errno(errno);
  file_calls().close(descriptor);
  return cause;
}

// The permissions that the new file takes over: the old file's, or what the user's mask leaves.
mode_t mode_for(const std::string& target) {
  struct stat status = {};
  if (file_calls().lstat(target.c_str(), &status) == 0) return status.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

FileCause copy_to_new(const std::string& from, const std::string& to) {
  File source;
  FileCause cause = source.open_for_reading(from, Sharing::shared);
  if (cause != FileCause::none) return cause;
  File copy;
  cause = copy.create_new(to);
  if (cause != FileCause::none) return cause;

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
  const FileCause cause = change_mode(from, mode_for(target));
  if (cause != FileCause::none) return cause;
  return file_calls().rename(from.c_str(), target.c_str()) == 0 ? FileCause::none
                                                                : cause_from_errno(errno);
}

}  // namespace

void remove_output(const std::string& path) {
  const std::string target = resolve(path);
  struct stat status = {};
  if (file_calls().lstat(target.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
    file_calls().unlink(target.c_str());
  }
}

FileCause replace_file(const std::string& from, const std::string& to) {
  const std::string target = resolve(to);
  FileCause cause = change_mode(from, mode_for(target));
  if (cause == FileCause::none && file_calls().rename(from.c_str(), target.c_str()) != 0) {
    if (errno == EXDEV) {
      const std::string beside = target + ".korvex-new";
      remove_file(beside);
      cause = copy_to_new(from, beside);
      if (cause == FileCause::none) cause = move_into_place(beside, target);
      if (cause != FileCause::none) remove_file(beside);
      remove_file(from);
    } else {
      cause = cause_from_errno(errno);
    }
  }
  if (cause != FileCause::none) {
    remove_file(from);
    return cause;
  }
  return sync_folder(folder_of(target));
}

}  // namespace korvex::platform
