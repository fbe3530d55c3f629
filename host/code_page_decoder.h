#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// Turns much text of the module's code page into UTF-8: the same as platform::to_utf8(), whose
// system converter was two thirds of a load's work where a single column was full-width.
class CodePageDecoder {
 public:
  // Replaces `out`.
  void decode(std::string_view text, std::string& out);

 private:
  // A character in UTF-8; no size for a code without a character.
  struct Character {
    std::array<char, 3> bytes = {};
    unsigned char size = 0;
  };

  void build();
  bool decode_known(std::string_view text, std::string& out) const;

  std::vector<Character> characters_;  // by code, of one or two bytes; built when first needed
};

}  // namespace korvex::host
