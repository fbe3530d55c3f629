#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/replacing_file.h"

namespace korvex::host {

// What a command writes: a file, which takes its place when complete, so that whatever goes wrong
// on the way leaves the old one; or a device, a pipe or standard output, which get it as it comes.
class ReplacedOutput {
 public:
  // Under a name that the user gave: what a link leads to is written, and "-" is standard output,
  // for which `standard` stands. Whether there is somewhere to write tells failure().
  ReplacedOutput(const std::string& path, std::ostream& standard);

  // Under a name that the program made, in a folder where others may have put something else: a
  // link there is replaced and not followed, and what is neither link nor file is left alone.
  // `is_synchronised`: the disk has the file before it takes its place.
  explicit ReplacedOutput(const std::string& path, bool is_synchronised = false);

  void write(std::string_view text);

  // Writes out what write() has gathered.
  void flush();

  // The file that is being written beside its place, until finish().
  platform::File& new_file() { return replacing_.file(); }

  // Puts the file in its place.
  void finish();

  // The same; says what went wrong. Whether nothing did.
  bool finish(std::ostream& messages);

  // What went wrong, empty if nothing did. What ends the program throws Interrupted instead.
  const std::string& failure() const { return failure_; }

 private:
  void write_standard();
  void note(platform::FileCause cause);
  void fail(int error_number);

  std::string path_;
  std::ostream* standard_ = nullptr;  // null for a file
  std::string buffer_;                // for standard output
  platform::File direct_;             // open for a device or a pipe
  platform::ReplacingFile replacing_;
  std::string failure_;
};

}  // namespace korvex::host
