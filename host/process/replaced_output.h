#pragma once

#include <iosfwd>
#include <string>

namespace korvex::host {

// A file that is written beside its place and takes it when complete: whatever goes wrong on the
// way leaves the old file.
class ReplacedOutput {
 public:
  // Under a name that the user gave: what a link leads to is written, devices and pipes as they
  // are, and "-" is standard output, for which `standard` stands. Whether there is somewhere to
  // write tells failure().
  ReplacedOutput(const std::string& path, std::ostream& standard);

  // Under a name that the program made, in a folder where others may have put something else: a
  // link there is replaced and not followed, and what is neither link nor file is left alone.
  explicit ReplacedOutput(const std::string& path);
  ~ReplacedOutput();
  ReplacedOutput(const ReplacedOutput&) = delete;
  ReplacedOutput& operator=(const ReplacedOutput&) = delete;

  void write(std::string_view text);

  // Writes out what write() has gathered.
  void flush();

  // Puts the file in its place.
  void finish();

  // What went wrong, empty if nothing did. What ends the program throws Interrupted instead.
  const std::string& failure() const { return failure_; }

 private:
  void begin();
  void fail();

  std::string path_;
  bool is_standard_ = false;
  std::string temporary_;
  std::ostream* standard_ = nullptr;
  int descriptor_ = -1;
  std::string buffer_;
  std::string failure_;
};

}  // namespace korvex::host
