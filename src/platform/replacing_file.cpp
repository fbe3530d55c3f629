#include "platform/replacing_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

#include "platform/file_calls.h"
#include "platform/interruption.h"
#include "platform/path.h"

namespace korvex::platform {

namespace {

// Asks the disk to remember the new name. The rename has happened whatever the answer, so a folder
// that cannot be synchronised is no failure.
void sync_folder(const std::string& folder) {
  const int descriptor = retry_interrupted(
      [&] { return file_calls().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
  if (descriptor < 0) return;
  retry_interrupted([&] { return file_calls().fsync(descriptor); });
  file_calls().close(descriptor);
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
  return cause;
}

// The last steps before a file takes its place.
FileCause complete(File& file, const std::string& target, bool is_synchronised) {
  FileCause cause = file.take_over_owner(target);
  if (cause == FileCause::none && is_synchronised) cause = file.sync();
  const FileCause closed = file.close();
  return cause == FileCause::none ? closed : cause;
}

FileCause rename_file(const std::string& from, const std::string& to) {
  return file_calls().rename(from.c_str(), to.c_str()) == 0 ? FileCause::none
                                                            : note_file_error(errno);
}

// For a target on another file system: the bytes are copied beside it before they take its name.
FileCause copy_into_place(const std::string& from, const std::string& target,
                          bool is_synchronised) {
  TemporaryFile copy;
  FileCause cause = copy.create(folder_of(target));
  if (cause == FileCause::none) cause = copy_bytes(from, copy.file());
  if (cause == FileCause::none) cause = complete(copy.file(), target, is_synchronised);
  if (cause == FileCause::none) cause = rename_file(copy.path(), target);
  if (cause == FileCause::none) copy.keep();
  return cause;
}

}  // namespace

// A link, or nothing at all, blocks no process.
FileCause ReplacingFile::hold_old() {
  struct stat status = {};
  if (file_calls().lstat(path_.c_str(), &status) != 0) {
    return errno == ENOENT ? FileCause::none : note_file_error(errno);
  }
  if (S_ISLNK(status.st_mode)) return FileCause::none;
  if (!S_ISREG(status.st_mode)) return FileCause::access_denied;
  const FileCause cause = old_.open_to_replace(path_);
  return cause == FileCause::not_found ? FileCause::none : cause;  // gone since
}

FileCause ReplacingFile::begin(const std::string& path, const Replacing& how) {
  give_up();
  how_ = how;
  path_ = path;
  return how.holds_old ? hold_old() : FileCause::none;
}

FileCause ReplacingFile::create(const std::string& path, const Replacing& how) {
  FileCause cause = begin(path, how);
  std::string target = path;
  if (cause == FileCause::none && how.link == Replacing::Link::followed) {
    cause = resolve_links(target);
  }
  if (cause == FileCause::none) cause = new_.create(folder_of(target));
  if (cause != FileCause::none) old_.discard();
  return cause;
}

FileCause ReplacingFile::create_in(const std::string& folder, std::time_t moment,
                                   const std::string& path, const Replacing& how) {
  const FileCause cause = begin(path, how);
  return cause == FileCause::none ? new_.create(folder, moment) : cause;
}

FileCause ReplacingFile::create_as(const std::string& temporary, const std::string& path,
                                   const Replacing& how) {
  const FileCause cause = begin(path, how);
  return cause == FileCause::none ? new_.create_as(temporary) : cause;
}

FileCause ReplacingFile::finish() {
  std::string target = path_;
  FileCause cause = FileCause::none;
  if (how_.link == Replacing::Link::followed) cause = resolve_links(target);
  const std::string folder = folder_of(target);  // nothing must fail after the rename
  if (cause == FileCause::none) cause = complete(file(), target, how_.is_synchronised);
  if (cause == FileCause::none) cause = move_to(target);
  if (cause != FileCause::none) return cause;
  old_.discard();
  if (how_.is_synchronised) sync_folder(folder);
  return FileCause::none;
}

FileCause ReplacingFile::move_to(const std::string& target) {
  if (file_calls().rename(new_.path().c_str(), target.c_str()) == 0) {
    new_.keep();
    return FileCause::none;
  }
  if (errno != EXDEV) return note_file_error(errno);
  const FileCause cause = copy_into_place(new_.path(), target, how_.is_synchronised);
  if (cause == FileCause::none) new_.remove();
  return cause;
}

void ReplacingFile::give_up() {
  if (how_.removes_old && !new_.path().empty()) remove_file(path_);
  leave_old();
}

void ReplacingFile::leave_old() {
  new_.remove();
  old_.discard();
}

}  // namespace korvex::platform
