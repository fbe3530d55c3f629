#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

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
