#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

#include "lists/line_feed_scan.h"
#include "platform/file.h"

namespace korvex {

// Reads a text file line by line: a line feed, or a carriage return and a line feed, ends a line;
// nothing else is special. Longer lines come in pieces of max_line_size bytes, each a line.
class LineReader {
 public:
  static constexpr std::size_t max_line_size = 32'768;

  // So many bytes after each line's begin may be read, whatever its length.
  static constexpr std::size_t overhang = LineFeedScan::overhang;

  enum class Status { lines, end, failed };

  // Keeps a reference to the open file.
  explicit LineReader(platform::File& file);

  // The next lines, one or more, without their ends, each cut at a zero byte; valid until the next
  // call. They are one after the other in the same memory.
  Status next(std::span<const std::string_view>& lines);

 private:
  // What must be in sight to decide about a piece: the longest one and a two-byte line end.
  static constexpr std::size_t look_ahead = max_line_size + 2;

  std::size_t find_plain_lines();
  Status find_any_line();
  bool fill();

  platform::File& file_;
  std::unique_ptr<char[]> buffer_;  // with a line feed after its end, where scanning stops
  LineFeedScan feeds_;
  std::array<std::string_view, 256> lines_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool at_end_ = false;
  bool has_zeros_ = false;  // among the bytes at hand
};

}  // namespace korvex
