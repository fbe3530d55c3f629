#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace korvex {

// The text of a fixed-size field: up to its terminator, or all of it where a file left none.
template <std::size_t Size>
std::string_view field_text(const char (&field)[Size]) {
  return {field, ::strnlen(field, Size)};
}

// Stores `text` with the rest of the field zero. What does not fit is cut, so that the terminator
// is always kept.
template <std::size_t Size>
void store_field(char (&field)[Size], std::string_view text) {
  const std::size_t count = std::min(text.size(), Size - 1);
  std::copy_n(text.data(), count, field);
  std::fill(field + count, field + Size, '\0');
}

}  // namespace korvex
