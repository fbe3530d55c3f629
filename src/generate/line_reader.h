#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "platform/file.h"

namespace korvex {

// Reads a text file line by line: a line feed, or a carriage return and a line feed, ends a line;
// nothing else is special. Longer lines come in pieces of max_line_size bytes, each a line.
class LineReader {
 public:
  static constexpr std::size_t max_line_size = 32'768;

  enum class Status { line, end, failed };

  // Keeps a reference to the open file.
  explicit LineReader(platform::File& file);

  // The next line without its end, cut at a zero byte; valid until the next call.
  Status next(std::string_view& line) {
    const char* const begin = buffer_.get() + begin_;
    if (!has_zeros_ && end_ - begin_ >= look_ahead) {
      const auto* feed = static_cast<const char*>(std::memchr(begin, '\n', max_line_size));
      if (feed != nullptr && feed != begin && feed[-1] != '\r') [[likely]] {
        line = {begin, static_cast<std::size_t>(feed - begin)};
        begin_ += line.size() + 1;
        return Status::line;
      }
    }
    return find_next(line);
  }

 private:
  // What must be in sight to decide about a piece: the longest one and a two-byte line end.
  static constexpr std::size_t look_ahead = max_line_size + 2;

  Status find_next(std::string_view& line);
  bool fill();

  platform::File& file_;
  std::unique_ptr<char[]> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool at_end_ = false;
  bool has_zeros_ = false;  // among the bytes at hand
};

}  // namespace korvex
