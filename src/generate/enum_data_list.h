#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "generate/line_block.h"
#include "generate/line_reader.h"

namespace korvex {

// One value of an enumeration file.
using ClEnumData = std::string_view;

// The values of an item's enumeration file in file order, all in one block of memory. Owns it; the
// views that it hands out live as long as it does and no value is added.
class ClEnumDataList {
 public:
  // Room for the values of a file of so many bytes, as far as that may be taken at its word: no
  // value is shorter than a character and its line end. Room that is not used costs nothing but
  // addresses.
  void reserve(std::uint64_t bytes) {
    constexpr std::uint64_t most = 64 * 1024 * 1024;
    const auto room = static_cast<std::size_t>(std::min(bytes, most));
    text_.reserve(room);
    sizes_.reserve(room / 2 + 1);
  }

  void append(std::string_view value) {
    text_.append(value);
    sizes_.push_back(static_cast<Size>(value.size()));
    largest_ = std::max(largest_, value.size());
  }

  std::int32_t count() const { return static_cast<std::int32_t>(sizes_.size()); }
  std::size_t largest() const { return largest_; }

 private:
  friend class EnumCursor;

  using Size = std::uint16_t;
  static_assert(LineReader::max_line_size <= std::numeric_limits<Size>::max());

  std::string text_;
  std::vector<Size> sizes_;
  std::size_t largest_ = 0;
};

// A place in a list, which it must not outlive.
class EnumCursor {
 public:
  explicit EnumCursor(const ClEnumDataList& list) : list_(&list) {}

  std::int32_t index() const { return index_; }
  std::int32_t left() const { return list_->count() - index_; }
  bool is_at_end() const { return left() == 0; }

  ClEnumData value() const { return {list_->text_.data() + begin_, size()}; }

  void rewind() { index_ = 0, begin_ = 0; }
  void next() { begin_ += size(), ++index_; }
  void back() { --index_, begin_ -= size(); }

  // Writes the value at `out`, where there must be room for a chunk more; answers its end.
  char* write(char* out) const {
    const std::size_t size = this->size();
    const char* text = list_->text_.data() + begin_;
    const bool is_chunk_inside = begin_ + LineBlock::chunk_size <= list_->text_.size();
    if (size <= LineBlock::chunk_size && is_chunk_inside) [[likely]] {
      std::memcpy(out, text, LineBlock::chunk_size);
    } else {
      std::memcpy(out, text, size);
    }
    return out + size;
  }

 private:
  std::size_t size() const { return list_->sizes_[static_cast<std::size_t>(index_)]; }

  const ClEnumDataList* list_;
  std::int32_t index_ = 0;
  std::size_t begin_ = 0;
};

}  // namespace korvex
