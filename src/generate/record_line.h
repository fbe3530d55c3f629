#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace korvex {

// The line of the record being assembled. Room is asked for once a field, so that appending itself
// checks nothing.
class RecordLine {
 public:
  // Texts of up to this many bytes are copied as one block of it: their buffers must be that large.
  static constexpr std::size_t block_size = 32;

  RecordLine() { grow(4096); }

  void clear() { size_ = 0; }
  std::size_t size() const { return size_; }
  const char* data() const { return buffer_.get(); }
  std::string_view from(std::size_t offset) const {
    return {buffer_.get() + offset, size_ - offset};
  }

  // Makes room for `bytes` more, and for the overhang of a block copy.
  void require(std::size_t bytes) {
    if (capacity_ - size_ < bytes + block_size) grow(2 * (size_ + bytes + block_size));
  }

  void append(char byte) { buffer_[size_++] = byte; }

  void append(std::string_view text) {
    std::memcpy(buffer_.get() + size_, text.data(), text.size());
    size_ += text.size();
  }

  // `text` must have block_size readable bytes, whatever its length.
  void append_block(const char* text, std::size_t length) {
    if (length <= block_size) {
      std::memcpy(buffer_.get() + size_, text, block_size);
      size_ += length;
    } else {
      append(std::string_view(text, length));
    }
  }

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
};

}  // namespace korvex
