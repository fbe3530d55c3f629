#pragma once

#include <sys/stat.h>
#include <sys/types.h>

namespace korvex::platform {

// Every system call that touches a file, in one table, so that a test can replace it and make the
// n-th call fail. Each entry has the contract of the call of its name, without the signals that
// write() raises.
struct FileCalls {
  int (*open)(const char* path, int flags, mode_t mode);
  int (*close)(int descriptor);
  ssize_t (*read)(int descriptor, void* data, size_t size);
  ssize_t (*write)(int descriptor, const void* data, size_t size);
  // For what raises none: to keep them away costs more than a device takes.
  ssize_t (*write_to_device)(int descriptor, const void* data, size_t size);
  off_t (*lseek)(int descriptor, off_t offset, int whence);
  int (*fstat)(int descriptor, struct stat* status);
  int (*lstat)(const char* path, struct stat* status);
  int (*fstatat)(int folder, const char* path, struct stat* status, int flags);
  int (*fchmod)(int descriptor, mode_t mode);
  int (*fchown)(int descriptor, uid_t owner, gid_t group);
  int (*ftruncate)(int descriptor, off_t size);
  int (*fsync)(int descriptor);
  int (*flock)(int descriptor, int operation);
  int (*rename)(const char* from, const char* to);
  int (*unlink)(const char* path);
  ssize_t (*readlink)(const char* path, char* target, size_t size);
  int (*mkdir)(const char* path, mode_t mode);
  int (*fsetxattr)(int descriptor, const char* name, const void* value, size_t size, int flags);
  ssize_t (*getxattr)(const char* path, const char* name, void* value, size_t size);
};

// The table in use: the system's, unless a FileCallsOverride is alive.
const FileCalls& file_calls();

// The table that calls the system.
const FileCalls& system_file_calls();

// Replaces the table for its own lifetime. Not thread-safe: for tests, which run one thread.
class FileCallsOverride {
 public:
  explicit FileCallsOverride(const FileCalls& calls);
  ~FileCallsOverride();
  FileCallsOverride(const FileCallsOverride&) = delete;
  FileCallsOverride& operator=(const FileCallsOverride&) = delete;

 private:
  const FileCalls* previous_;
};

}  // namespace korvex::platform
