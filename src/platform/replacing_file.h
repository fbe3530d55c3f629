#pragma once

#include <ctime>
#include <string>

#include "platform/file.h"
#include "platform/temporary_file.h"

namespace korvex::platform {

// How a file takes the place of an older one.
struct Replacing {
  // What happens to a link with this name. If the user gave the name, its target is replaced. If
  // the name is derived from another one, the link itself is replaced: others may have created it.
  enum class Link { followed, replaced };

  Link link = Link::followed;

  // The old file is locked until then, so that nobody else writes it. A file that this user could
  // not write is not replaced.
  bool holds_old = false;

  // After a failure the older file is removed too, so that it is not taken for the new one.
  bool removes_old = false;

  // finish() returns when contents and folder are on the disk: a power cut leaves the old file or
  // the new one.
  bool is_synchronised = false;
};

// A file that is written under a temporary name, and renamed when it is complete: there is always
// the old file or the new one. The old one's mode and owner stay.
class ReplacingFile {
 public:
  ReplacingFile() = default;

  // A file that was not finished is given up.
  ~ReplacingFile() { give_up(); }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  // Begins the file in the folder of `path`, in `folder` or as `temporary`. After a failure nothing
  // has changed.
  FileCause create(const std::string& path, const Replacing& how);
  FileCause create_in(const std::string& folder, std::time_t moment, const std::string& path,
                      const Replacing& how);
  FileCause create_as(const std::string& temporary, const std::string& path, const Replacing& how);

  File& file() { return new_.file(); }

  FileCause write(const void* data, std::size_t size) { return file().write(data, size); }

  // Closes the file and gives it its place, also on another file system. After a failure it is
  // given up when this object goes.
  FileCause finish();

  // Removes what was begun, and the old file where it is not to stay.
  void give_up();

  // Removes what was begun; the old file stays in any case.
  void leave_old();

 private:
  FileCause begin(const std::string& path, const Replacing& how);
  FileCause hold_old();
  FileCause move_to(const std::string& target);

  Replacing how_;
  std::string path_;
  File old_;
  TemporaryFile new_;
};

}  // namespace korvex::platform
