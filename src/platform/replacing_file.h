#pragma once

#include <ctime>
#include <string>

#include "platform/file.h"
#include "platform/temporary_file.h"

namespace korvex::platform {

// How a file takes the place of an older one.
struct Replacing {
  // What becomes of a link in its place: under a name that a user gave, what the link leads to is
  // replaced; under a derived name, where others may have put something else, the link itself, so
  // that no file but this one is touched.
  enum class Link { followed, replaced };

  Link link = Link::followed;

  // The old file is held meanwhile, against others who would write it. What could not be written is
  // not replaced then.
  bool holds_old = false;

  // A file that was given up leaves no older one, which would pass for it.
  bool removes_old = false;

  // Contents and folder are on the disk before anybody is told that the file is whole: a power cut
  // leaves the old file or the new one.
  bool is_synchronised = false;
};

// A file that is written under a name of its own and takes its place in one step when it is whole:
// at no moment is there neither the old nor the new one. The old one's mode and owner stay.
class ReplacingFile {
 public:
  ReplacingFile() = default;

  // A file that was not finished is given up.
  ~ReplacingFile() { give_up(); }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  // Begins the file beside its place, in `folder` or as `temporary`. After a failure nothing has
  // changed.
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
