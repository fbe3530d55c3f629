#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace korvex::sources {

// Texts in the order in which they were added, most often of records in a row. They stay where they
// are until the block is cleared.
//
// After each text there are `overhang` bytes that can be read, whatever they hold, so that a short
// text can be copied as a piece of known size.
class TextBlock {
 public:
  static constexpr std::size_t most_texts = 256;
  static constexpr std::size_t overhang = 32;

  TextBlock() { add_chunk(chunk_size); }

  std::size_t size() const { return size_; }
  std::string_view operator[](std::size_t i) const { return texts_[i]; }

  // Of all texts.
  std::size_t bytes() const { return bytes_; }

  // Whether it has as many texts, or as many bytes, as a block is to have.
  bool is_full() const { return size_ == most_texts || bytes_ > most_bytes; }

  void clear() {
    size_ = bytes_ = 0;
    chunks_.resize(1);
    next_ = chunks_.front().get();
    end_ = next_ + chunk_size;
  }

  // Adds a text that is kept elsewhere as long as it is needed, with an overhang of its own.
  void add(std::string_view text) {
    texts_[size_++] = text;
    bytes_ += text.size();
  }
  void add_empty() { add({blank.data(), 0}); }

  // Adds a copy of a text.
  void add_copy(std::string_view text) {
    char* const out = room(text.size());
    std::memcpy(out, text.data(), text.size());
    add_written(out + text.size());
  }

  // Where a text of at most so many bytes can be written, and a whole overhang after them. It is
  // added when its end is told.
  char* room(std::size_t bytes) {
    if (static_cast<std::size_t>(end_ - next_) < bytes + overhang) add_chunk(bytes + chunk_size);
    return next_;
  }
  void add_written(const char* end) {
    const auto bytes = static_cast<std::size_t>(end - next_);
    add({next_, bytes});
    next_ += bytes;
  }

 private:
  static constexpr std::size_t chunk_size = 64 * 1024;
  static constexpr std::size_t most_bytes = chunk_size / 2;
  static constexpr std::array<char, overhang> blank = {};

  void add_chunk(std::size_t bytes) {
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(bytes));
    next_ = chunks_.back().get();
    end_ = next_ + bytes;
  }

  std::array<std::string_view, most_texts> texts_;
  std::size_t size_ = 0;
  std::size_t bytes_ = 0;
  std::vector<std::unique_ptr<char[]>> chunks_;
  char* next_ = nullptr;
  const char* end_ = nullptr;
};

// Copies a text of a block to where there is room for it and an overhang; answers its end.
inline char* copy_text(std::string_view text, char* out) {
  std::memcpy(out, text.data(), TextBlock::overhang);
  if (text.size() > TextBlock::overhang) [[unlikely]]
    std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

}  // namespace korvex::sources
