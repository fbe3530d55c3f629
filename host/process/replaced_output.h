#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "host/process/interruption.h"

namespace korvex::host {

// A file that is written beside its place and takes it when complete: whatever goes wrong on the
// way leaves the old file. "-" is standard output.
class ReplacedOutput {
 public:
  // `standard` stands for standard output. Whether there is somewhere to write tells failure().
  ReplacedOutput(const std::string& path, std::ostream& standard);
  ~ReplacedOutput();
  ReplacedOutput(const ReplacedOutput&) = delete;
  ReplacedOutput& operator=(const ReplacedOutput&) = delete;

  void write(std::string_view text);

  // Writes out what write() has gathered.
  void flush();

  // Puts the file in its place.
  void finish();

  // What went wrong, empty if nothing did.
  const std::string& failure() const { return failure_; }

 private:
  void fail();

  std::string path_;
  bool is_standard_ = false;
  std::string temporary_;
  std::optional<RemovedOnInterruption> removal_;
  std::ostream& standard_;
  int descriptor_ = -1;
  std::string buffer_;
  std::string failure_;
};

}  // namespace korvex::host
