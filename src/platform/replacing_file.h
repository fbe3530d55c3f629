#pragma once

#include <string>

#include "platform/file.h"

namespace korvex::platform {

// A file under a derived name, in a folder where others may have put something else: it is written
// under a temporary name of its own and takes its name when it is whole. A link there is replaced,
// never followed, so that no file but this one is touched.
class ReplacingFile {
 public:
  ReplacingFile() = default;

  // Unless it was finished, neither the new file nor the old one stays.
  ~ReplacingFile() { remove(); }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  // Begins the file. Fails, with nothing changed, where the old one could not be written: it is no
  // file, or somebody holds it or may not have it written. Its mode is kept.
  FileCause create(const std::string& path);

  FileCause write(const void* data, std::size_t size) { return file_.write(data, size); }

  // Closes the file and gives it its name.
  FileCause finish();

  // Gives up what was begun, the old file with it.
  void remove();

  // Gives up what was begun: the old file stays as it was.
  void give_up();

 private:
  FileCause hold_old(const std::string& path);

  File old_;  // held against others who would write it
  File file_;
  std::string path_;
  std::string temporary_;  // empty unless begun and not finished
};

}  // namespace korvex::platform
