#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace korvex::platform {

inline bool is_ascii(char byte) { return (static_cast<unsigned char>(byte) & 0x80) == 0; }

// Such a text is the same in UTF-8 and in code page 932.
inline bool is_ascii(std::string_view text) {
  constexpr std::uint64_t high_bits = 0x8080808080808080;
  std::uint64_t bits = 0;
  std::size_t left = text.size();
  const char* next = text.data();
  for (; left >= sizeof bits; left -= sizeof bits, next += sizeof bits) {
    std::uint64_t word;
    std::memcpy(&word, next, sizeof word);
    bits |= word;
  }
  for (; left > 0; --left) bits |= static_cast<std::uint64_t>(*next++);
  return (bits & high_bits) == 0;
}

// Of a character that began before.
inline bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// How many bytes the character has that begins so; 0 when none does.
inline std::size_t character_size(char first) {
  const auto lead = static_cast<unsigned char>(first);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The size of the character at the begin of a text; 0 when there is none, as for a character that
// is written longer than it need be, for half of a surrogate pair, and above U+10FFFF.
inline std::size_t first_character_size(std::string_view text) {
  const std::size_t size = text.empty() ? 0 : character_size(text.front());
  if (size == 0 || size > text.size()) return 0;
  if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(size),
                   is_continuation)) {
    return 0;
  }
  if (size < 3) return size;
  const auto lead = static_cast<unsigned char>(text[0]);
  const auto second = static_cast<unsigned char>(text[1]);
  const bool is_too_low = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool is_too_high = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return is_too_low || is_too_high ? 0 : size;
}

inline bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = first_character_size(text);
    if (size == 0) return false;
    text.remove_prefix(size);
  }
  return true;
}

// The text up to `most` bytes, cut between characters.
inline std::string_view cut_text(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && is_continuation(text[most])) --most;
  return text.substr(0, most);
}

}  // namespace korvex::platform
