#include "generate/line_reader.h"

#include <algorithm>
#include <cstring>

namespace korvex {

namespace {

constexpr std::size_t buffer_size = 256 * 1024;

}  // namespace

LineReader::LineReader(platform::File& file)
    : file_(file), buffer_(std::make_unique_for_overwrite<char[]>(buffer_size)) {}

// Moves what is left to the front and fills the rest of the buffer.
bool LineReader::fill() {
  std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  std::size_t count = 0;
  const std::size_t room = buffer_size - end_;
  if (file_.read(buffer_.get() + end_, room, count) != platform::FileCause::none) return false;
  end_ += count;
  at_end_ = count < room;
  has_zeros_ = std::memchr(buffer_.get(), 0, end_) != nullptr;
  return true;
}

LineReader::Status LineReader::find_next(std::string_view& line) {
  if (end_ - begin_ < look_ahead && !at_end_ && !fill()) return Status::failed;
  const std::string_view rest(buffer_.get() + begin_, end_ - begin_);
  if (rest.empty()) return Status::end;

  const auto feed = rest.substr(0, look_ahead).find('\n');
  std::size_t size = std::min(rest.size(), max_line_size);
  std::size_t taken = size;
  if (feed != std::string_view::npos) {
    const std::size_t content = feed > 0 && rest[feed - 1] == '\r' ? feed - 1 : feed;
    if (content < max_line_size) {
      size = content;
      taken = feed + 1;
    }
  }
  begin_ += taken;
  line = rest.substr(0, size);
  if (has_zeros_) line = line.substr(0, line.find('\0'));
  return Status::line;
}

}  // namespace korvex
