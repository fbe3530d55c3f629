#pragma once

#include <cstddef>
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
  Status next(std::string_view& line);

 private:
  bool fill();

  platform::File& file_;
  std::unique_ptr<char[]> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool at_end_ = false;
  bool has_zeros_ = false;  // among the bytes at hand
};

}  // namespace korvex
