#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/utf8.h"

// How texts in UTF-8 become others, character by character. A byte that is part of no character is
// taken for one of ASCII.
namespace korvex::sources {

// The code of a character, which is whole.
inline char32_t decoded(std::string_view character) {
  constexpr unsigned char lead_masks[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  char32_t code = static_cast<unsigned char>(character[0]) & lead_masks[character.size()];
  for (const char byte : character.substr(1)) {
    code = code << 6 | (static_cast<unsigned char>(byte) & 0x3F);
  }
  return code;
}

inline void append_encoded(std::string& out, char32_t code) {
  const auto byte = [](char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
  };
  if (code < 0x80) {
    out += byte(code);
    return;
  }
  if (code < 0x800) {
    out += byte(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) {
      out += byte(0xE0 | code >> 12);
    } else {
      out += byte(0xF0 | code >> 18);
      out += byte(0x80 | (code >> 12 & 0x3F));
    }
    out += byte(0x80 | (code >> 6 & 0x3F));
  }
  out += byte(0x80 | (code & 0x3F));
}

// Hands over each character beyond ASCII, and takes what is put in its place; `ascii` maps the
// others.
template <class Ascii, class Other>
std::string in_place_of(std::string_view text, Ascii ascii, Other other) {
  std::string out;
  while (!text.empty()) {
    const std::size_t size = platform::first_character_size(text);
    if (size <= 1) {
      out += ascii(text.front());
    } else {
      other(out, decoded(text.substr(0, size)));
    }
    text.remove_prefix(std::max<std::size_t>(size, 1));
  }
  return out;
}

}  // namespace korvex::sources
