#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

#include "generate/line_block.h"
#include "generate/line_reader.h"
#include "platform/large_memory.h"

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
    if (room > capacity_) grow(room);
    sizes_.reserve(room / 2 + 1);
  }

  void append(std::string_view value) {
    if (capacity_ - end_ < value.size()) grow(2 * (end_ + value.size()));
    copy_value(text_.get() + end_, value);
    sizes_.push_back(static_cast<Size>(value.size()));
    end_ += value.size();
    smallest_ = sizes_.size() == 1 ? value.size() : std::min(smallest_, value.size());
    largest_ = std::max(largest_, value.size());
  }

  std::int32_t count() const { return static_cast<std::int32_t>(sizes_.size()); }
  std::size_t largest() const { return largest_; }
  bool has_one_size() const { return smallest_ == largest_; }

 private:
  friend class EnumCursor;

  using Size = std::uint16_t;
  static_assert(LineReader::max_line_size <= std::numeric_limits<Size>::max());

  // Most values are short: two stores that overlap instead of a call.
  static void copy_value(char* out, std::string_view value) {
    constexpr std::size_t half = 8;
    if (value.size() >= half && value.size() <= 2 * half) {
      std::memcpy(out, value.data(), half);
      std::memcpy(out + value.size() - half, value.data() + value.size() - half, half);
    } else {
      std::memcpy(out, value.data(), value.size());
    }
  }

  // With room for the chunk as which the last value may be copied.
  void grow(std::size_t capacity) {
    auto larger = std::make_unique_for_overwrite<char[]>(capacity + LineBlock::chunk_size);
    platform::use_large_pages(larger.get(), capacity);
    if (end_ > 0) std::memcpy(larger.get(), text_.get(), end_);
    text_ = std::move(larger);
    capacity_ = capacity;
  }

  std::unique_ptr<char[]> text_;
  std::size_t capacity_ = 0;
  std::size_t end_ = 0;
  std::vector<Size> sizes_;
  std::size_t smallest_ = 0;
  std::size_t largest_ = 0;
};

// A place in a list that has at least one value. The list must outlive it and take no more values.
class EnumCursor {
 public:
  explicit EnumCursor(const ClEnumDataList& list)
      : begin_(list.text_.get()), text_(begin_), sizes_(list.sizes_.data()), count_(list.count()) {}

  std::int32_t index() const { return index_; }
  std::int32_t left() const { return count_ - index_; }
  bool is_at_end() const { return index_ == count_; }

  ClEnumData value() const { return {text_, sizes_[index_]}; }

  void rewind() {
    text_ = begin_;
    index_ = 0;
  }
  void next() { text_ += sizes_[index_++]; }

  // The same for several values of one size.
  void skip(std::int64_t values) {
    text_ += static_cast<std::ptrdiff_t>(sizes_[index_]) * values;
    index_ += static_cast<std::int32_t>(values);
  }
  void back() { text_ -= sizes_[--index_]; }

  // Writes the value at `out`, where there must be room for a chunk more, and goes on to the next;
  // answers the value's end.
  char* write_next(char* out) {
    const std::size_t size = sizes_[index_++];
    __builtin_prefetch(text_ + read_ahead);
    if (size <= LineBlock::chunk_size / 2) [[likely]] {
      std::memcpy(out, text_, LineBlock::chunk_size / 2);
    } else if (size <= LineBlock::chunk_size) {
      std::memcpy(out, text_, LineBlock::chunk_size);
    } else {
      std::memcpy(out, text_, size);
    }
    text_ += size;
    return out + size;
  }

 private:
  // Lists come from more memory than the processor keeps at hand.
  static constexpr std::size_t read_ahead = 2048;

  const char* begin_;
  const char* text_;
  const ClEnumDataList::Size* sizes_;
  std::int32_t count_;
  std::int32_t index_ = 0;
};

}  // namespace korvex
