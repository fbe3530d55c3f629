#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace korvex {

// One value of an enumeration file.
using ClEnumData = std::string_view;

// The values of an item's enumeration file in file order, all in one block of memory. Owns it; the
// views that it hands out live as long as it does.
class ClEnumDataList {
 public:
  // Room for the values of a file of so many bytes, as far as that may be taken at its word: no
  // value is shorter than a character and its line end. Room that is not used costs nothing but
  // addresses.
  void reserve(std::uint64_t bytes) {
    constexpr std::uint64_t most = 64 * 1024 * 1024;
    const auto room = static_cast<std::size_t>(std::min(bytes, most));
    text_.reserve(room);
    ends_.reserve(room / 2 + 1);
  }

  void append(std::string_view value) {
    text_.append(value);
    ends_.push_back(text_.size());
  }

  std::int32_t count() const { return static_cast<std::int32_t>(ends_.size()); }

  ClEnumData value(std::int32_t index) const {
    const auto place = static_cast<std::size_t>(index);
    const std::size_t begin = place == 0 ? 0 : ends_[place - 1];
    return std::string_view(text_).substr(begin, ends_[place] - begin);
  }

 private:
  std::string text_;
  std::vector<std::size_t> ends_;
};

}  // namespace korvex
