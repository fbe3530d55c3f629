#include "platform/file_calls.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>

#include "platform/quiet_write.h"

namespace korvex::platform {

namespace {

int open_with_mode(const char* path, int flags, mode_t mode) { return ::open(path, flags, mode); }

const FileCalls* table_in_use = nullptr;  // the system's

}  // namespace

const FileCalls& system_file_calls() {
  static constexpr FileCalls calls = {
      .open = open_with_mode,
      .close = ::close,
      .read = ::read,
      .write = write_quietly,
      .write_to_device = ::write,
      .lseek = ::lseek,
      .fstat = ::fstat,
      .lstat = ::lstat,
      .fstatat = ::fstatat,
      .fchmod = ::fchmod,
      .fchown = ::fchown,
      .ftruncate = ::ftruncate,
      .fsync = ::fsync,
      .flock = ::flock,
      .rename = ::rename,
      .unlink = ::unlink,
      .readlink = ::readlink,
      .mkdir = ::mkdir,
      .fsetxattr = ::fsetxattr,
      .getxattr = ::getxattr,
  };
  return calls;
}

const FileCalls& file_calls() {
  return table_in_use != nullptr ? *table_in_use : system_file_calls();
}

FileCallsOverride::FileCallsOverride(const FileCalls& calls) : previous_(table_in_use) {
  table_in_use = &calls;
}

FileCallsOverride::~FileCallsOverride() { table_in_use = previous_; }

}  // namespace korvex::platform
