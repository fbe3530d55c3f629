#include "platform/replacing_file.h"

#include <sys/stat.h>

#include <cerrno>
#include <ctime>
#include <utility>

#include "platform/file_calls.h"
#include "platform/local_time.h"
#include "platform/path.h"

namespace korvex::platform {

// A link or nothing at all holds nobody up.
FileCause ReplacingFile::hold_old(const std::string& path) {
  struct stat status = {};
  if (file_calls().lstat(path.c_str(), &status) != 0) {
    return errno == ENOENT ? FileCause::none : cause_from_errno(errno);
  }
  if (S_ISLNK(status.st_mode)) return FileCause::none;
  if (!S_ISREG(status.st_mode)) return FileCause::access_denied;
  const FileCause cause = old_.open_to_replace(path);
  return cause == FileCause::not_found ? FileCause::none : cause;  // gone since
}

FileCause ReplacingFile::create(const std::string& path) {
  remove();
  FileCause cause = hold_old(path);
  std::string temporary;
  if (cause == FileCause::none) {
    path_ = path;
    cause = create_temporary(folder_of(path), std::time(nullptr), file_, temporary);
  }
  if (cause == FileCause::none && old_.is_open() && !file_.take_over_mode(old_)) {
    remove_file(temporary);
    file_.discard();
    cause = FileCause::access_denied;
  }
  if (cause == FileCause::none) {
    temporary_ = std::move(temporary);
  } else {
    old_.discard();
  }
  return cause;
}

FileCause ReplacingFile::finish() {
  const FileCause cause = file_.close();
  if (cause != FileCause::none) return cause;
  if (file_calls().rename(temporary_.c_str(), path_.c_str()) != 0) return cause_from_errno(errno);
  temporary_.clear();
  old_.discard();
  return FileCause::none;
}

void ReplacingFile::remove() {
  if (temporary_.empty()) return;
  remove_file(path_);
  give_up();
}

void ReplacingFile::give_up() {
  if (temporary_.empty()) return;
  remove_file(temporary_);
  temporary_.clear();
  file_.discard();
  old_.discard();
}

}  // namespace korvex::platform
