#include "host/process/replaced_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>

#include "host/process/interruption.h"
#include "platform/file.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t block_size = 256 * 1024;
constexpr mode_t usual_mode = 0666;

// What the user lets new files be.
mode_t new_file_mode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return usual_mode & ~mask;
}

}  // namespace

ReplacedOutput::ReplacedOutput(const std::string& path, std::ostream& standard)
    : path_(path), is_standard_(path == "-"), standard_(&standard) {
  if (is_standard_) return;
  std::error_code ignored;
  // A link stays one; devices and pipes are written as they are.
  std::string target = path_;
  if (platform::resolve_links(target) == platform::FileCause::none) path_ = target;
  if (fs::exists(path_, ignored) && !fs::is_regular_file(path_, ignored)) {
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor_ < 0) fail();
    return;
  }
  begin();
}

ReplacedOutput::ReplacedOutput(const std::string& path) : path_(path) {
  std::error_code ignored;
  const fs::file_status old = fs::symlink_status(path_, ignored);
  if (fs::exists(old) && !fs::is_regular_file(old) && !fs::is_symlink(old)) {
    failure_ = platform::printable(path_) + ": is no file, expected one that can be replaced";
    return;
  }
  begin();
}

void ReplacedOutput::begin() {
  std::string name = path_ + ".XXXXXX";
  descriptor_ = ::mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) {
    fail();
    return;
  }
  temporary_ = name;
  struct stat old = {};
  const bool has_old = ::lstat(path_.c_str(), &old) == 0 && S_ISREG(old.st_mode);
  ::fchmod(descriptor_, has_old ? old.st_mode & 07777 : new_file_mode());
}

ReplacedOutput::~ReplacedOutput() {
  if (descriptor_ >= 0) ::close(descriptor_);
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void ReplacedOutput::fail() {
  const int error_number = errno;
  check_interruption();
  failure_ = (is_standard_ ? "standard output" : platform::printable(path_)) + ": " +
             std::strerror(error_number);
}

void ReplacedOutput::write(std::string_view text) {
  buffer_ += text;
  if (buffer_.size() >= block_size) flush();
}

void ReplacedOutput::flush() {
  if (!failure_.empty()) return;
  if (is_standard_) {
    errno = 0;
    if (!standard_->write(buffer_.data(), std::ssize(buffer_)) || !standard_->flush()) fail();
  }
  for (std::size_t done = 0; !is_standard_ && done < buffer_.size();) {
    const ssize_t written = platform::retry_interrupted(
        [&] { return ::write(descriptor_, buffer_.data() + done, buffer_.size() - done); });
    if (written < 0) {
      fail();
      return;
    }
    done += static_cast<std::size_t>(written);
  }
  buffer_.clear();
}

void ReplacedOutput::finish() {
  flush();
  if (is_standard_ || !failure_.empty()) return;
  const int closed = ::close(descriptor_);
  descriptor_ = -1;
  if (closed != 0 || (!temporary_.empty() && ::rename(temporary_.c_str(), path_.c_str()) != 0)) {
    fail();
    return;
  }
  temporary_.clear();
}

}  // namespace korvex::host
