#include "platform/file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "platform/file_calls.h"
#include "platform/interruption.h"
#include "platform/path.h"

namespace korvex::platform {

namespace {

thread_local int last_error = 0;

// What the user's mask leaves of this is the mode of a new file.
constexpr unsigned new_file_mode = 0666;

// A file that is replaced this often while it is being opened is out of reach.
constexpr int max_replacements = 100;

// The number that the system gives to /dev/null and the like.
constexpr unsigned memory_devices = 1;

// How the system knows the marks of files.
constexpr const char* mark_name = "user.korvex.mark";

// The system says the same of a missing file and of a missing folder.
FileCause cause_of_failed_open(const std::string& path, int number) {
  struct stat status = {};
  const bool folder_is_missing =
      number == ENOENT && file_calls().lstat(folder_of(path).c_str(), &status) != 0;
  const FileCause cause = note_file_error(number);
  return folder_is_missing ? FileCause::bad_path : cause;
}

}  // namespace

FileCause cause_from_errno(int number) {
  switch (number) {
    case ENOENT:
      return FileCause::not_found;
    case ENOTDIR:
    case ENAMETOOLONG:
      return FileCause::bad_path;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return FileCause::access_denied;
    case EEXIST:
      return FileCause::already_exists;
    case ENOSPC:
    case EDQUOT:
      return FileCause::disk_full;
    default:
      return FileCause::generic;
  }
}

int last_file_error() { return last_error; }

FileCause note_file_error(int number) {
  last_error = number;
  return cause_from_errno(number);
}

std::optional<std::string> mark_of_file(const std::string& path) {
  std::array<char, longest_mark> text;
  const ssize_t size = file_calls().getxattr(path.c_str(), mark_name, text.data(), text.size());
  if (size < 0) return std::nullopt;
  return std::string(text.data(), static_cast<std::size_t>(size));
}

std::optional<std::uint64_t> size_of_file(const std::string& path) {
  struct stat status = {};
  if (file_calls().fstatat(AT_FDCWD, path.c_str(), &status, 0) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(status.st_size);
}

FileIdentity identity_of(const std::string& path) {
  struct stat status = {};
  if (file_calls().fstatat(AT_FDCWD, path.c_str(), &status, 0) != 0) return std::nullopt;
  return std::pair(status.st_dev, status.st_ino);
}

File::~File() { discard(); }

File::File(File&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      regular_(other.regular_),
      device_(other.device_),
      memory_(other.memory_),
      failed_(other.failed_),
      buffer_(std::move(other.buffer_)),
      buffered_(std::exchange(other.buffered_, 0)) {}

File& File::operator=(File&& other) noexcept {
  if (this != &other) {
    discard();
    descriptor_ = std::exchange(other.descriptor_, -1);
    regular_ = other.regular_;
    device_ = other.device_;
    memory_ = other.memory_;
    failed_ = other.failed_;
    buffer_ = std::move(other.buffer_);
    buffered_ = std::exchange(other.buffered_, 0);
  }
  return *this;
}

FileCause File::open(const std::string& path, int flags, unsigned mode) {
  discard();
  failed_ = FileCause::none;
  regular_ = false;
  const int descriptor = retry_interrupted([&] {
    return file_calls().open(path.c_str(), flags | O_CLOEXEC, static_cast<mode_t>(mode));
  });
  if (descriptor < 0) return cause_of_failed_open(path, errno);
  descriptor_ = descriptor;

  struct stat status = {};
  if (file_calls().fstat(descriptor_, &status) != 0) {
    const FileCause cause = note_file_error(errno);
    discard();
    // Only a file that was not there is opened for creation: it must not remain after the failure.
    if ((flags & O_CREAT) != 0) remove_file(path);
    return cause;
  }
  if (S_ISDIR(status.st_mode)) {
    discard();
    return note_file_error(EISDIR);
  }
  regular_ = S_ISREG(status.st_mode);
  device_ = S_ISCHR(status.st_mode);
  memory_ = device_ && major(status.st_rdev) == memory_devices;
  last_error = 0;
  return FileCause::none;
}

// Whether the path still leads to the open file: somebody may have replaced or removed it before it
// was held. Where that cannot be told, it counts as true.
bool File::stands_at(const std::string& path) const {
  struct stat held = {};
  struct stat named = {};
  if (file_calls().fstat(descriptor_, &held) != 0) return true;
  if (file_calls().fstatat(AT_FDCWD, path.c_str(), &named, 0) != 0) return errno != ENOENT;
  return held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

FileCause File::open_and_hold(const std::string& path, int flags, Sharing sharing) {
  for (int i = 0; i < max_replacements; ++i) {
    const FileCause cause = open(path, flags, new_file_mode);
    if (cause != FileCause::none) return cause;
    // No run needs a device or a pipe for itself alone.
    if (!regular_ && sharing == Sharing::exclusive) return FileCause::none;
    if (!hold_file(descriptor_, sharing)) break;
    if (sharing != Sharing::exclusive || stands_at(path)) return FileCause::none;
  }
  discard();
  note_file_error(EWOULDBLOCK);
  return FileCause::sharing_violation;
}

FileCause File::open_for_reading(const std::string& path, Sharing sharing) {
  return open_and_hold(path, O_RDONLY | O_NONBLOCK, sharing);
}

FileCause File::open_for_writing(const std::string& path) {
  return open(path, O_WRONLY | O_NONBLOCK, 0);
}

FileCause File::open_to_replace(const std::string& path) {
  return open_and_hold(path, O_WRONLY | O_NONBLOCK | O_NOFOLLOW, Sharing::exclusive);
}

FileCause File::create(const std::string& path) {
  FileCause cause = open_and_hold(path, O_WRONLY, Sharing::exclusive);
  if (cause == FileCause::not_found) {
    cause = open_and_hold(path, O_WRONLY | O_CREAT, Sharing::exclusive);
  }
  if (cause != FileCause::none || !regular_) return cause;
  // A new file stays as it is: nothing must fail that would leave a rest.
  std::uint64_t bytes = 0;
  if (size(bytes) == FileCause::none && bytes == 0) return FileCause::none;
  if (retry_interrupted([&] { return file_calls().ftruncate(descriptor_, 0); }) != 0) {
    cause = note_file_error(errno);
    discard();
  }
  return cause;
}

FileCause File::create_new(const std::string& path) {
  return open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, new_file_mode);
}

FileCause File::read(void* data, std::size_t size, std::size_t& count) {
  count = 0;
  while (count < size) {
    const ssize_t got = retry_interrupted([&] {
      return file_calls().read(descriptor_, static_cast<char*>(data) + count, size - count);
    });
    if (got < 0) return note_file_error(errno);
    if (got == 0) break;
    count += static_cast<std::size_t>(got);
  }
  return FileCause::none;
}

FileCause File::write_through(const char* data, std::size_t size) {
  const auto write = device_ ? file_calls().write_to_device : file_calls().write;
  while (size > 0 && failed_ == FileCause::none) {
    const ssize_t written = retry_interrupted([&] { return write(descriptor_, data, size); });
    if (written < 0) {
      failed_ = note_file_error(errno);
    } else if (written == 0) {
      failed_ = FileCause::generic;
    } else {
      data += written;
      size -= static_cast<std::size_t>(written);
    }
  }
  return failed_;
}

FileCause File::write(const void* data, std::size_t size) {
  if (failed_ != FileCause::none) return failed_;
  if (buffered_ == 0 && size >= direct_write_size) {
    return write_through(static_cast<const char*>(data), size);
  }
  if (!buffer_) buffer_ = std::make_unique_for_overwrite<char[]>(write_buffer_size);
  const char* bytes = static_cast<const char*>(data);
  while (size > 0) {
    const std::size_t part = std::min(size, write_buffer_size - buffered_);
    std::memcpy(buffer_.get() + buffered_, bytes, part);
    buffered_ += part;
    bytes += part;
    size -= part;
    if (buffered_ == write_buffer_size && flush() != FileCause::none) return failed_;
  }
  return FileCause::none;
}

FileCause File::write_at_once(std::string_view bytes) {
  if (const FileCause cause = flush(); cause != FileCause::none) return cause;
  return write_through(bytes.data(), bytes.size());
}

FileIdentity File::identity() const {
  struct stat status = {};
  if (file_calls().fstat(descriptor_, &status) != 0) return std::nullopt;
  return std::pair(status.st_dev, status.st_ino);
}

bool File::set_mark(std::string_view text) {
  return text.size() <= longest_mark &&
         file_calls().fsetxattr(descriptor_, mark_name, text.data(), text.size(), 0) == 0;
}

FileCause File::flush() {
  const std::size_t count = std::exchange(buffered_, 0);
  return count > 0 ? write_through(buffer_.get(), count) : failed_;
}

FileCause File::seek(std::uint64_t offset) {
  if (const FileCause cause = flush(); cause != FileCause::none) return cause;
  const off_t reached = file_calls().lseek(descriptor_, static_cast<off_t>(offset), SEEK_SET);
  if (reached < 0) return note_file_error(errno);
  return static_cast<std::uint64_t>(reached) == offset ? FileCause::none : FileCause::generic;
}

FileCause File::size(std::uint64_t& bytes) {
  bytes = 0;
  struct stat status = {};
  if (file_calls().fstat(descriptor_, &status) != 0) return note_file_error(errno);
  if (S_ISREG(status.st_mode)) bytes = static_cast<std::uint64_t>(status.st_size);
  return FileCause::none;
}

FileCause File::sync() {
  if (const FileCause cause = flush(); cause != FileCause::none) return cause;
  const int result = retry_interrupted([&] { return file_calls().fsync(descriptor_); });
  if (result != 0) failed_ = note_file_error(errno);
  return failed_;
}

FileCause File::close() {
  FileCause cause = flush();
  if (descriptor_ >= 0 && file_calls().close(std::exchange(descriptor_, -1)) != 0 &&
      cause == FileCause::none && errno != EINTR) {
    cause = note_file_error(errno);
  }
  return cause;
}

void File::discard() {
  buffered_ = 0;
  if (descriptor_ >= 0) file_calls().close(std::exchange(descriptor_, -1));
}

FileCause File::take_over_owner(const std::string& path) {
  struct stat own = {};
  struct stat other = {};
  if (file_calls().lstat(path.c_str(), &other) != 0 || !S_ISREG(other.st_mode)) {
    return FileCause::none;
  }
  if (file_calls().fstat(descriptor_, &own) != 0) return note_file_error(errno);
  if (own.st_uid != other.st_uid || own.st_gid != other.st_gid) {
    static_cast<void>(file_calls().fchown(descriptor_, other.st_uid, other.st_gid));
  }
  return file_calls().fchmod(descriptor_, other.st_mode & 07777) == 0 ? FileCause::none
                                                                      : note_file_error(errno);
}

void File::remove(const std::string& path) {
  // Still held, so that nobody else begins to write it before it is gone.
  if (regular_) {
    // Where the links cannot be followed to their end, what is on the way goes: a file that is
    // not whole must not stay under its name.
    try {
      std::string target = path;
      static_cast<void>(resolve_links(target));
      if (stands_at(target)) remove_file(target);
    } catch (const std::bad_alloc&) {
      if (stands_at(path)) remove_file(path);
    }
  }
  discard();
}

FileCause remove_file(const std::string& path) {
  return file_calls().unlink(path.c_str()) == 0 ? FileCause::none : cause_from_errno(errno);
}

bool hold_file(int descriptor, Sharing sharing) {
  if (sharing == Sharing::unlocked) return true;
  const int operation = (sharing == Sharing::exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB;
  if (retry_interrupted([&] { return file_calls().flock(descriptor, operation); }) == 0)
    return true;
  return errno != EWOULDBLOCK;
}

}  // namespace korvex::platform
