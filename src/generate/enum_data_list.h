#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>

#include "generate/large_array.h"
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
  // value is shorter than a character and its line end.
  void reserve(std::uint64_t bytes) {
    constexpr std::uint64_t most = 64 * 1024 * 1024;
    const auto room = static_cast<std::size_t>(std::min(bytes, most));
    if (room <= text_.capacity()) return;
    text_.grow(room + LineBlock::chunk_size, end_);
    sizes_.grow(room / 2 + 1, count_);
  }

  // Lines that a LineReader has just read together; empty ones are no values.
  void append(std::span<const std::string_view> lines) {
    const std::string_view last = lines.back();
    const auto bytes = static_cast<std::size_t>(last.data() + last.size() - lines.front().data());
    text_.require(end_ + bytes + LineBlock::chunk_size, end_);
    sizes_.require(count_ + lines.size(), count_);
    char* out = text_.data() + end_;
    Size* size = sizes_.data() + count_;
    std::size_t smallest = smallest_;
    std::size_t largest = largest_;
    for (const std::string_view line : lines) {
      if (line.empty()) continue;
      copy_value(out, line);
      out += line.size();
      *size++ = static_cast<Size>(line.size());
      smallest = std::min(smallest, line.size());
      largest = std::max(largest, line.size());
    }
    end_ = static_cast<std::size_t>(out - text_.data());
    count_ = static_cast<std::size_t>(size - sizes_.data());
    smallest_ = smallest;
    largest_ = largest;
  }

  std::int32_t count() const { return static_cast<std::int32_t>(count_); }
  std::size_t largest() const { return largest_; }
  bool has_one_size() const { return smallest_ == largest_; }

 private:
  friend class EnumCursor;

  using Size = std::uint16_t;
  static_assert(LineReader::max_line_size <= std::numeric_limits<Size>::max());

  // Most values are short: one or two stores instead of a call.
  static void copy_value(char* out, std::string_view value) {
    constexpr std::size_t chunk_size = LineBlock::chunk_size;
    static_assert(chunk_size <= LineReader::overhang);
    if (value.size() <= chunk_size / 2) [[likely]] {
      std::memcpy(out, value.data(), chunk_size / 2);
    } else if (value.size() <= chunk_size) {
      std::memcpy(out, value.data(), chunk_size);
    } else {
      std::memcpy(out, value.data(), value.size());
    }
  }

  // With room behind the last value for the chunk as which it may be copied.
  LargeArray<char> text_;
  std::size_t end_ = 0;
  LargeArray<Size> sizes_;
  std::size_t count_ = 0;
  std::size_t smallest_ = std::numeric_limits<std::size_t>::max();
  std::size_t largest_ = 0;
};

// A place in a list that has at least one value. The list must outlive it and take no more values.
class EnumCursor {
 public:
  explicit EnumCursor(const ClEnumDataList& list)
      : begin_(list.text_.data()),
        text_(begin_),
        sizes_(list.sizes_.data()),
        count_(list.count()) {}

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
