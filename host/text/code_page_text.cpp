#include "host/text/code_page_text.h"

#include <algorithm>
#include <cstring>

#include "platform/codepage.h"
#include "platform/utf8.h"

namespace korvex::host {

std::optional<std::string> exact_code_page_text(std::string_view utf8, std::size_t* bad_offset) {
  if (platform::is_ascii(utf8)) return std::string(utf8);
  std::size_t lacking = utf8.size();
  std::optional<std::string> text = platform::from_utf8(utf8, &lacking);
  const std::string_view known = utf8.substr(0, lacking);
  const std::string again = platform::to_utf8(text ? *text : *platform::from_utf8(known));
  if (text && again == utf8) return text;
  const auto stays = std::mismatch(known.begin(), known.end(), again.begin(), again.end()).first;
  auto offset = static_cast<std::size_t>(stays - known.begin());
  while (offset > 0 && offset < known.size() && platform::is_continuation(known[offset])) --offset;
  if (bad_offset != nullptr) *bad_offset = offset;
  return std::nullopt;
}

namespace {

constexpr std::size_t single_bytes = 0x100;
constexpr std::size_t all_codes = 0x10000;
constexpr std::size_t longest_character = 3;
constexpr std::string_view unknown_character = "\xEF\xBF\xBD";

std::size_t code_of(char lead, char trail) {
  return std::size_t{static_cast<unsigned char>(lead)} * single_bytes +
         static_cast<unsigned char>(trail);
}

}  // namespace

bool CodePageDecoder::decode(std::string_view text, std::string& out) {
  if (platform::is_ascii(text)) {
    out.assign(text);
    return true;
  }
  if (characters_.empty()) build();
  return decode_characters(text, out);
}

// One call for all codes: each call opens the system's converter again.
void CodePageDecoder::build() {
  characters_.resize(all_codes);
  std::string lines;
  std::vector<std::size_t> codes;
  for (std::size_t code = 0x80; code < all_codes; ++code) {
    const char lead = static_cast<char>(code / single_bytes);
    const char trail = static_cast<char>(code % single_bytes);
    const bool is_single = code < single_bytes && !platform::is_lead_byte(trail);
    if (!is_single && !platform::is_legal_double_byte(lead, trail)) continue;
    if (!is_single) lines += lead;
    (lines += trail) += '\n';
    codes.push_back(code);
  }
  const std::string decoded = platform::to_utf8(lines);
  std::string_view rest = decoded;
  for (const std::size_t code : codes) {
    const std::string_view character = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(character.size() + 1);
    if (character.size() > longest_character || character.starts_with(unknown_character)) continue;
    std::copy(character.begin(), character.end(), characters_[code].bytes.begin());
    characters_[code].size = static_cast<unsigned char>(character.size());
  }
}

bool CodePageDecoder::decode_characters(std::string_view text, std::string& out) const {
  // A character of one byte becomes up to three, and each is copied with room for three.
  out.resize(longest_character * text.size() + longest_character);
  char* place = out.data();
  bool is_known = true;
  for (std::size_t i = 0; i < text.size() && is_known; ++i) {
    const char byte = text[i];
    if (platform::is_ascii(byte)) {
      *place++ = byte;
      continue;
    }
    std::size_t code = static_cast<unsigned char>(byte);
    if (platform::is_lead_byte(byte)) code = ++i < text.size() ? code_of(byte, text[i]) : 0;
    const Character& character = characters_[code];
    is_known = character.size > 0;
    std::memcpy(place, character.bytes.data(), longest_character);
    place += character.size;
  }
  out.resize(static_cast<std::size_t>(place - out.data()));
  return is_known;
}

}  // namespace korvex::host
