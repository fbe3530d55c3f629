#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/piece_outlet.h"

namespace korvex::platform {

// Why a file operation failed, as far as the module distinguishes causes.
enum class FileCause {
  none,
  not_found,          // no such file
  bad_path,           // no such file either: a folder of the path is missing or is not a folder
  access_denied,      // permissions, a read-only file system, a folder in place of a file
  sharing_violation,  // another open file holds it
  already_exists,     // create_new found the name taken
  disk_full,          // no space or no quota left
  generic,
};

FileCause cause_from_errno(int number);

// The error number of the calling thread's last file operation that failed, EWOULDBLOCK for a file
// that another one holds; 0 when none has failed since a file was opened. A cause says what the
// module distinguishes, this says why. Removing does not count, which may be cleaning up.
int last_file_error();

// Remembers the error number, and answers its cause.
FileCause note_file_error(int number);

// Whether an open failed because nothing is under the path.
constexpr bool is_missing(FileCause cause) {
  return cause == FileCause::not_found || cause == FileCause::bad_path;
}

// How an opened file may be shared with other open files, in this process and in others.
enum class Sharing {
  unlocked,   // no matter who else has it open
  shared,     // others may read it too
  exclusive,  // nobody else may have it open
};

// Takes the lock for `sharing` on an open descriptor without waiting; it ends with the descriptor.
// False when another open file is in the way. A file system without locks lets everybody in.
bool hold_file(int descriptor, Sharing sharing);

// Device and number of a file, the same for all of its names. Nothing for none.
using FileIdentity = std::optional<std::pair<dev_t, ino_t>>;

// That of the file at the path, after links.
FileIdentity identity_of(const std::string& path);

// An open file. Owns its descriptor; the destructor closes it and drops what was not flushed.
// Movable, not copyable; not thread-safe. Operations answer FileCause::none on success and never
// throw, except that the write buffer may raise std::bad_alloc.
class File {
 public:
  // Written bytes are gathered here before they go to the system: one system call a line would
  // cost thirty times a block.
  static constexpr std::size_t write_buffer_size = 256 * 1024;

  // As much as this at once gains nothing from being gathered first.
  static constexpr std::size_t direct_write_size = 64 * 1024;

  File() = default;
  ~File();
  File(File&& other) noexcept;
  File& operator=(File&& other) noexcept;

  // Opens an existing file for reading. Fails with sharing_violation when the lock for
  // `sharing` is not free. A file that is replaced before it is locked is opened again, so that the
  // locked file is the one at the path. Never blocks, also not on a pipe without a writer.
  FileCause open_for_reading(const std::string& path, Sharing sharing);

  // Opens an existing file for writing, without changing it.
  FileCause open_for_writing(const std::string& path);

  // Opens an existing file that is to be replaced, for writing, and locks it. A link is not
  // followed.
  FileCause open_to_replace(const std::string& path);

  // Creates the file, or empties the one that exists, for writing, and locks it while it is open:
  // one that another process has locked is not touched. Waits for the reader of a pipe.
  FileCause create(const std::string& path);

  // Creates a file that must not exist yet; does not follow links.
  FileCause create_new(const std::string& path);

  // Reads until `size` bytes are there or the file ends; `count` receives how many there are.
  FileCause read(void* data, std::size_t size, std::size_t& count);

  // Appends to the write buffer and hands full blocks to the system. After a failure the file holds
  // some of what was written before; nothing later is accepted.
  FileCause write(const void* data, std::size_t size);

  // The same for much at once: hands it to the system with what is in the buffer before it.
  FileCause write_at_once(std::string_view bytes);

  // Moves the position, after handing over what was written.
  FileCause seek(std::uint64_t offset);

  // Size in bytes of a regular file; 0 for anything else.
  FileCause size(std::uint64_t& bytes);

  // Gives the file a short text that is not among its bytes and stays with it under any name, or
  // takes the place of an older one. False where the file system keeps none.
  bool set_mark(std::string_view text);

  bool is_open() const { return descriptor_ >= 0; }
  bool is_regular() const { return regular_; }

  // Who may write what threads make. A write to anything but a regular file, or a device that is
  // nothing but memory, may have to wait for a reader.
  PieceTaker taker() const { return regular_ || memory_ ? PieceTaker::maker : PieceTaker::caller; }
  FileIdentity identity() const;

  FileCause flush();

  // Flushes and waits until the disk has it.
  FileCause sync();

  // Flushes and closes. The file is closed also after a failure.
  FileCause close();

  // Closes without flushing.
  void discard();

  // Gives the file the permissions and the owner of the one that is at `path`, the owner as far
  // as the system lets this user. Nothing to do for what is no regular file.
  FileCause take_over_owner(const std::string& path);

  // After a failed run: closes without flushing, and removes the file at the path under which it
  // was opened. A device or a pipe stays, and so does another file that now has this path.
  void remove(const std::string& path);

 private:
  FileCause open(const std::string& path, int flags, unsigned mode);
  FileCause open_and_hold(const std::string& path, int flags, Sharing sharing);
  bool stands_at(const std::string& path) const;
  FileCause write_through(const char* data, std::size_t size);

  int descriptor_ = -1;
  bool regular_ = false;
  bool device_ = false;  // of characters: writing to it raises no signal
  bool memory_ = false;  // such a device as /dev/null
  FileCause failed_ = FileCause::none;
  std::unique_ptr<char[]> buffer_;
  std::size_t buffered_ = 0;
};

// The mark of the file at the path; nothing when it has none, or a longer one than this.
inline constexpr std::size_t longest_mark = 255;
std::optional<std::string> mark_of_file(const std::string& path);

// The size of the regular file at the path; nothing for anything else.
std::optional<std::uint64_t> size_of_file(const std::string& path);

// Removes the name. not_found when there is none.
FileCause remove_file(const std::string& path);

// Follows `path` while it is a link, also to a place where nothing is yet. After a failure it
// may be anywhere on the way.
FileCause resolve_links(std::string& path);

// Whether there is something at the path, after links.
bool exists(const std::string& path);

// Whether the file at the path is write-protected: the system refuses to write it, or its mode lets
// nobody write it, which does not stop an administrator. False where there is nothing.
bool is_write_protected(const std::string& path);

// Removes the file at the path, after links.
FileCause remove_target(const std::string& path);

// Reads a whole file, or a pipe until its writer ends, which may take long: a signal that ends the
// process ends it. Returns the system's error, if any: EFBIG where there are more than `most`
// bytes, which ends the reading of a file without an end.
std::error_code read_file(const std::string& path, std::string& content,
                          std::size_t most = std::numeric_limits<std::size_t>::max());

// Passes a file to `take` in pieces, each with the end of a line or of the file at its end, until
// `take` returns false. A failure ends it, and so does a signal that ends the process.
void read_line_pieces(const std::string& path, const std::function<bool(std::string_view)>& take);

}  // namespace korvex::platform
