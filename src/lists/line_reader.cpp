#include "lists/line_reader.h"

#include <algorithm>
#include <cstring>

namespace korvex {

namespace {

constexpr std::size_t buffer_size = 256 * 1024;

}  // namespace

LineReader::LineReader(platform::File& file)
    : file_(file), buffer_(std::make_unique<char[]>(buffer_size + 1 + overhang)) {
  buffer_[0] = '\n';
  feeds_.start(buffer_.get());
}

// Moves what is left to the front and fills the rest of the buffer.
bool LineReader::fill() {
  std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  std::size_t count = 0;
  const std::size_t room = buffer_size - end_;
  if (file_.read(buffer_.get() + end_, room, count) != platform::FileCause::none) return false;
  end_ += count;
  buffer_[end_] = '\n';
  at_end_ = count < room;
  has_zeros_ = std::memchr(buffer_.get(), 0, end_) != nullptr;
  return true;
}

LineReader::Status LineReader::next(std::span<const std::string_view>& lines) {
  std::size_t count = has_zeros_ ? 0 : find_plain_lines();
  if (count == 0) {
    const Status status = find_any_line();
    if (status != Status::lines) return status;
    feeds_.start(buffer_.get() + begin_);
    count = 1;
  }
  lines = std::span(lines_).first(count);
  return Status::lines;
}

// Lines that end at a line feed at hand and are no longer than a piece.
std::size_t LineReader::find_plain_lines() {
  LineFeedScan feeds = feeds_;
  const char* const end = buffer_.get() + end_;
  const char* begin = buffer_.get() + begin_;
  std::size_t count = 0;
  for (; count < lines_.size(); ++count) {
    const char* const feed = feeds.next();
    const auto size = static_cast<std::size_t>(feed - begin);
    if (feed == end || size >= max_line_size) {
      feeds.start(begin);
      break;
    }
    const bool is_pair = size > 0 && feed[-1] == '\r';
    lines_[count] = {begin, size - (is_pair ? 1 : 0)};
    begin = feed + 1;
  }
  feeds_ = feeds;
  begin_ = static_cast<std::size_t>(begin - buffer_.get());
  return count;
}

// Any other line, after as much has been read as decides about it.
LineReader::Status LineReader::find_any_line() {
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
  const std::string_view line = rest.substr(0, size);
  lines_[0] = has_zeros_ ? line.substr(0, line.find('\0')) : line;
  return Status::lines;
}

}  // namespace korvex
