#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "courses/large_array.h"
#include "courses/line_block.h"

namespace korvex {

// One value of a value list.
using ClEnumData = std::string_view;

// The values of an item's value list in file order, all in one block of memory. Owns it; the
// views that it hands out live as long as it does and no value is added.
class ClEnumDataList {
 public:
  // What append() asks of the lines: their largest size, and how many bytes from each line's begin
  // on must be readable.
  static constexpr std::size_t max_value_size = std::numeric_limits<std::uint16_t>::max();
  static constexpr std::size_t overhang = LineBlock::chunk_size;

  // Room for the values of a file of so many bytes, up to a limit: no value is shorter than a
  // character and its line end.
  void reserve(std::uint64_t bytes) {
    constexpr std::uint64_t most = 64 * 1024 * 1024;
    const auto room = static_cast<std::size_t>(std::min(bytes, most));
    if (room <= text_.capacity()) return;
    text_.grow(room + LineBlock::chunk_size, end_);
    sizes_.grow(room / 2 + 1, count_);
  }

  // Lines that were read together and are in one piece of memory; empty ones are no values.
  void append(std::span<const std::string_view> lines) {
    const std::string_view last = lines.back();
    const auto bytes = static_cast<std::size_t>(last.data() + last.size() - lines.front().data());
    text_.require(end_ + bytes + LineBlock::chunk_size, end_);
    sizes_.require(count_ + lines.size(), count_);
    for (std::size_t left = lines.size(); left > 0;) {
      if (marks_.empty() || count_ - marks_.back().index >= values_between_marks) {
        marks_.push_back({count_, end_});
      }
      const std::size_t few = std::min(left, values_between_marks);
      append_few(lines.last(left).first(few));
      left -= few;
    }
  }

  std::size_t count() const { return count_; }
  std::size_t largest() const { return largest_; }
  bool has_one_size() const { return smallest_ == largest_; }

  // All values in a row, and the size of each: what distinguishes two lists.
  std::string_view text() const { return {text_.data(), end_}; }
  std::span<const std::uint16_t> sizes() const { return {sizes_.data(), count_}; }

 private:
  friend class EnumCursor;

  using Size = std::uint16_t;

  // Where a value begins, for one in so many, so that none is far from a known place.
  struct Mark {
    std::size_t index = 0;
    std::size_t offset = 0;
  };
  static constexpr std::size_t values_between_marks = 256;

  void append_few(std::span<const std::string_view> lines) {
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

  // Most values are short: one or two stores instead of a call.
  static void copy_value(char* out, std::string_view value) {
    constexpr std::size_t chunk_size = LineBlock::chunk_size;
    if (value.size() <= chunk_size / 2) [[likely]] {
      std::memcpy(out, value.data(), chunk_size / 2);
    } else if (value.size() <= chunk_size) {
      std::memcpy(out, value.data(), chunk_size);
    } else {
      std::memcpy(out, value.data(), value.size());
    }
  }

  // With room after the last value for the chunk as which it may be copied.
  LargeArray<char> text_;
  std::size_t end_ = 0;
  LargeArray<Size> sizes_;
  std::size_t count_ = 0;
  std::vector<Mark> marks_;
  std::size_t smallest_ = std::numeric_limits<std::size_t>::max();
  std::size_t largest_ = 0;
};

// A place in a list that has at least one value. The list must outlive it and take no more values.
class EnumCursor {
 public:
  explicit EnumCursor(const ClEnumDataList& list)
      : list_(&list), text_(list.text_.data()), sizes_(list.sizes_.data()), count_(list.count()) {}

  std::size_t index() const { return index_; }
  std::size_t left() const { return count_ - index_; }
  bool is_at_end() const { return index_ == count_; }

  ClEnumData value() const { return {text_, sizes_[index_]}; }

  void rewind() {
    text_ = list_->text_.data();
    index_ = 0;
  }

  // Goes to a value, or after the last one.
  void seek(std::size_t index) {
    const auto after = std::upper_bound(
        list_->marks_.begin(), list_->marks_.end(), index,
        [](std::size_t place, const ClEnumDataList::Mark& mark) { return place < mark.index; });
    const ClEnumDataList::Mark& mark = after[-1];
    text_ = list_->text_.data() + mark.offset;
    for (std::size_t i = mark.index; i < index; ++i) text_ += sizes_[i];
    index_ = index;
  }
  void next() { text_ += sizes_[index_++]; }

  // The same for several values of one size.
  void skip(std::size_t values) {
    text_ += sizes_[index_] * values;
    index_ += values;
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

  const ClEnumDataList* list_;
  const char* text_;
  const ClEnumDataList::Size* sizes_;
  std::size_t count_;
  std::size_t index_ = 0;
};

}  // namespace korvex
