#pragma once

#include <cstddef>
#include <string_view>

namespace korvex::host {

// Of a character that began before.
inline bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// How many bytes the character has that begins so; 0 when none does.
inline std::size_t character_size(char first) {
  const auto lead = static_cast<unsigned char>(first);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// The text up to `most` bytes, cut between characters.
inline std::string_view cut_text(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && is_continuation(text[most])) --most;
  return text.substr(0, most);
}

}  // namespace korvex::host
