#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace korvex {

// Copies a text that is seldom longer than 8 bytes, which must be readable and writable.
inline void copy_short(char* out, const char* text, std::size_t size) {
  constexpr std::size_t short_size = 8;
  if (size <= short_size) [[likely]] {
    std::memcpy(out, text, short_size);
  } else {
    std::memcpy(out, text, size);
  }
}

// Lines on their way to the file: finished ones, and after them the one being assembled. Fields
// are written in place, so that a line is never copied before the file takes the block that it is
// in. Room is asked for once a field; appending itself checks nothing.
class LineBlock {
 public:
  // Short texts are copied as one chunk of this size, whatever their length.
  static constexpr std::size_t chunk_size = 32;

  explicit LineBlock(std::size_t capacity) { grow(capacity + chunk_size); }

  // Bytes of finished lines.
  std::string_view finished() const { return {buffer_.get(), line_begin_}; }

  std::size_t line_size() const { return size_ - line_begin_; }

  // Finishes the lines up to the byte at `end`; what follows it stays unfinished.
  void finish_lines(std::size_t end) { line_begin_ = end; }

  // Drops `bytes` finished bytes from the front.
  void remove_front(std::size_t bytes) {
    std::memmove(buffer_.get(), buffer_.get() + bytes, size_ - bytes);
    size_ -= bytes;
    line_begin_ -= bytes;
  }

  void clear() { size_ = line_begin_ = 0; }

  // Makes room for `bytes` more, and for the overhang of a chunk.
  void require(std::size_t bytes) {
    if (capacity_ - size_ < bytes + chunk_size) grow(2 * (size_ + bytes + chunk_size));
  }

  void append(char byte) { buffer_[size_++] = byte; }

  void append(std::string_view text) {
    std::memcpy(buffer_.get() + size_, text.data(), text.size());
    size_ += text.size();
  }

  // Where the next byte goes, for a writer that keeps to the room it asked for and then says how
  // far it came.
  char* cursor() { return buffer_.get() + size_; }
  void move_cursor(const char* end) { size_ = static_cast<std::size_t>(end - buffer_.get()); }

  // All bytes, and how many there are.
  char* data() { return buffer_.get(); }
  const char* data() const { return buffer_.get(); }
  std::size_t size() const { return size_; }

  // The last byte of the current line, which must not be empty.
  char& back() { return buffer_[size_ - 1]; }

 private:
  void grow(std::size_t capacity) {
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    if (size_ > 0) std::memcpy(larger.get(), buffer_.get(), size_);
    buffer_ = std::move(larger);
    capacity_ = capacity;
  }

  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_ = 0;
  std::size_t size_ = 0;
  std::size_t line_begin_ = 0;
};

}  // namespace korvex
