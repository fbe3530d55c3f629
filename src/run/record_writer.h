#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "courses/line_block.h"
#include "platform/file.h"
#include "values/error_codes.h"

namespace korvex {

// The output option of DGCreateData that limits the output, asks about repeats and allows Cancel.
enum class OutputOption : std::int32_t { plain = 0, guarded = 2 };

// With it, the line that would bring the file to this size is not written.
inline constexpr std::uint32_t output_limit_bytes = 2'147'483'647;

// Writes lines in blocks.
class RecordWriter {
 public:
  RecordWriter(platform::File& file, OutputOption output_option);

  // Where the next lines are assembled.
  LineBlock& lines() { return lines_; }

  // Accepts for writing the lines that begin at these places of lines(). 0, -26, -27, or -76 for
  // the first line that is not accepted, while those before it are.
  ErrorCode accept_lines(std::span<const std::size_t> begins);

  // The same for lines that are elsewhere, after those of lines(). They may be as many as others
  // have made at once.
  ErrorCode accept_lines(std::string_view lines, std::span<const std::size_t> begins);

  // The bytes of all lines that were accepted.
  std::uint64_t total_bytes() const { return total_bytes_; }

  // Who may call accept_lines() for lines that are elsewhere.
  platform::PieceTaker taker() const { return file_.taker(); }

  // Whether a line may be refused; otherwise nobody needs to know where lines begin.
  bool is_limited() const { return is_limited_; }

  // Hands every accepted line to the file. 0, -26 or -27.
  ErrorCode flush();

 private:
  std::size_t accepted_end(std::size_t end, std::span<const std::size_t> begins) const;
  ErrorCode hand_over_blocks();
  void keep(std::string_view& lines, std::size_t bytes);

  platform::File& file_;
  const std::size_t block_size_;
  LineBlock lines_;
  bool is_limited_;
  std::uint64_t total_bytes_ = 0;
};

}  // namespace korvex
