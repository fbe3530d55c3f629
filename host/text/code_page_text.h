#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// A UTF-8 text in code page 932, if that means the same text again. The system's converter takes
// some characters for others that look like them, such as U+301C for U+FF5E and the yen sign for a
// backslash. `bad_offset` then receives the byte offset of the first character that does not stay.
std::optional<std::string> exact_code_page_text(std::string_view utf8,
                                                std::size_t* bad_offset = nullptr);

// Turns many values of code page 932 into UTF-8, as platform::to_utf8() does, whose system
// converter was two thirds of a load's work where a single column was full-width.
class CodePageDecoder {
 public:
  // Replaces `out`. False for bytes that have no meaning in the code page; `out` then has the
  // characters in front of them.
  bool decode(std::string_view text, std::string& out);

 private:
  // A character in UTF-8; no size for a code without a character.
  struct Character {
    std::array<char, 3> bytes = {};
    unsigned char size = 0;
  };

  void build();
  bool decode_characters(std::string_view text, std::string& out) const;

  std::vector<Character> characters_;  // by code, of one or two bytes; built when first needed
};

}  // namespace korvex::host
