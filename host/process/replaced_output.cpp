#include "host/process/replaced_output.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <ostream>

#include "host/process/signals.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

namespace fs = std::filesystem;
using platform::Replacing;

constexpr std::size_t block_size = 256 * 1024;

}  // namespace

ReplacedOutput::ReplacedOutput(const std::string& path, std::ostream& standard) : path_(path) {
  std::error_code ignored;
  if (path == "-") {
    standard_ = &standard;
  } else if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {
    note(direct_.create(path));
  } else {
    note(replacing_.create(path, {.link = Replacing::Link::followed}));
  }
}

ReplacedOutput::ReplacedOutput(const std::string& path, bool is_synchronised) : path_(path) {
  std::error_code ignored;
  const fs::file_status old = fs::symlink_status(path_, ignored);
  if (fs::exists(old) && !fs::is_regular_file(old) && !fs::is_symlink(old)) {
    failure_ = platform::printable(path_) + ": is no file, expected one that can be replaced";
    return;
  }
  note(replacing_.create(path,
                         {.link = Replacing::Link::replaced, .is_synchronised = is_synchronised}));
}

void ReplacedOutput::write(std::string_view text) {
  if (!failure_.empty()) return;
  if (standard_ != nullptr) {
    buffer_ += text;
    if (buffer_.size() >= block_size) write_standard();
    return;
  }
  platform::File& file = direct_.is_open() ? direct_ : replacing_.file();
  note(file.write(text.data(), text.size()));
}

void ReplacedOutput::flush() {
  if (!failure_.empty()) return;
  if (standard_ != nullptr) return write_standard();
  note((direct_.is_open() ? direct_ : replacing_.file()).flush());
}

void ReplacedOutput::finish() {
  if (!failure_.empty()) return;
  if (standard_ != nullptr) return write_standard();
  note(direct_.is_open() ? direct_.close() : replacing_.finish());
}

bool ReplacedOutput::finish(std::ostream& messages) {
  finish();
  if (!failure_.empty()) messages << failure_ << std::endl;
  return failure_.empty();
}

void ReplacedOutput::write_standard() {
  errno = 0;
  if (!standard_->write(buffer_.data(), std::ssize(buffer_)) || !standard_->flush()) fail(errno);
  buffer_.clear();
}

void ReplacedOutput::note(platform::FileCause cause) {
  if (cause != platform::FileCause::none) fail(platform::last_file_error());
}

void ReplacedOutput::fail(int error_number) {
  check_interruption();
  failure_ = (standard_ != nullptr ? "standard output" : platform::printable(path_)) + ": " +
             std::strerror(error_number);
}

}  // namespace korvex::host
