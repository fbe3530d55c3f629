#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvex::host {

// Whether all of a text is UTF-8 and some of it must be: short words of half-width katakana can
// look like letters of UTF-8 that nobody uses so. `is_cut` says that the text may end in the middle
// of a character.
bool looks_like_utf8(std::string_view text, bool is_cut);

// The same for the beginning of a file; false for one that is no regular file.
bool file_looks_like_utf8(const std::string& path);

// A character of a list in UTF-8, which a reader of code page 932 takes for others.
struct MisreadCharacter {
  std::int64_t line = 0;   // from 1
  std::int64_t place = 0;  // in the line, in characters, from 1
  std::string text;
  bool is_in_code_page = false;
};

// Looks at the whole of a list. The first character that the code page lacks, or else the first one
// beyond ASCII; nothing where the list does not look like UTF-8.
std::optional<MisreadCharacter> find_misread_character(const std::string& path);

}  // namespace korvex::host
