#include "run/record_writer.h"

#include <algorithm>

#include "values/file_failure.h"

namespace korvex {

namespace {

// A multiple of the page cache's larger units, so that no write ends inside one.
constexpr std::size_t file_block_size = platform::File::write_buffer_size;

// What is written of lines that are elsewhere ends at multiples of this. The page cache takes bytes
// in small units where writes begin and end anywhere, which costs more than to copy the rest.
constexpr std::size_t file_unit_size = 64 * 1024;

// Nobody can cancel while a device or a reader takes what it is given, so that gets less at once.
constexpr std::size_t device_block_size = platform::File::direct_write_size;

}  // namespace

RecordWriter::RecordWriter(platform::File& file, OutputOption output_option)
    : file_(file),
      block_size_(file.is_regular() ? file_block_size : device_block_size),
      lines_(block_size_ + file_block_size / 4),
      is_limited_(output_option == OutputOption::guarded) {}

ErrorCode RecordWriter::accept_lines(std::span<const std::size_t> begins) {
  const std::size_t size = lines_.size();
  const std::size_t end = accepted_end(size, begins);
  total_bytes_ += end - begins.front();
  lines_.finish_lines(end);
  return end == size ? hand_over_blocks() : error::output_limit;
}

ErrorCode RecordWriter::accept_lines(std::string_view lines, std::span<const std::size_t> begins) {
  if (lines.empty()) return error::none;
  const std::size_t end = accepted_end(lines.size(), begins);
  const bool is_limit = end < lines.size();
  lines = lines.substr(0, end);
  total_bytes_ += end;
  // What is left of a unit before these lines goes together with their first bytes.
  const std::size_t unit = file_.is_regular() ? file_unit_size : 1;
  const std::size_t begun = lines_.finished().size() % unit;
  if (begun > 0) keep(lines, std::min(unit - begun, lines.size()));
  if (lines_.finished().size() % unit == 0) {
    if (const ErrorCode flushed = flush(); flushed != error::none) return flushed;
  }
  for (std::size_t whole = lines.size() / unit * unit; whole > 0;) {
    const std::size_t size = std::min(block_size_, whole);
    const platform::FileCause cause = file_.write_at_once(lines.substr(0, size));
    if (cause != platform::FileCause::none) return write_failure(cause);
    lines.remove_prefix(size);
    whole -= size;
  }
  keep(lines, lines.size());
  return is_limit ? error::output_limit : error::none;
}

// Keeps the first of some lines to be written later.
void RecordWriter::keep(std::string_view& lines, std::size_t bytes) {
  lines_.require(bytes);
  lines_.append(lines.substr(0, bytes));
  lines_.finish_lines(lines_.size());
  lines.remove_prefix(bytes);
}

// Where the lines end that are accepted, of those that end at `end`.
std::size_t RecordWriter::accepted_end(std::size_t end, std::span<const std::size_t> begins) const {
  if (!is_limited_ || total_bytes_ + (end - begins.front()) < output_limit_bytes) return end;
  // The line that reaches the limit begins where the last one ends that does not.
  const std::uint64_t room = output_limit_bytes - total_bytes_;
  const auto refused =
      std::partition_point(begins.begin() + 1, begins.end(),
                           [&](std::size_t line_end) { return line_end - begins.front() < room; });
  return refused[-1];
}

ErrorCode RecordWriter::hand_over_blocks() {
  if (lines_.finished().size() < block_size_) return error::none;

  const std::size_t whole = lines_.finished().size() / block_size_ * block_size_;
  const platform::FileCause cause = file_.write(lines_.finished().data(), whole);
  lines_.remove_front(whole);
  return cause == platform::FileCause::none ? error::none : write_failure(cause);
}

ErrorCode RecordWriter::flush() {
  const std::size_t size = lines_.finished().size();
  const platform::FileCause cause = file_.write(lines_.finished().data(), size);
  lines_.remove_front(size);
  return cause == platform::FileCause::none ? error::none : write_failure(cause);
}

}  // namespace korvex
