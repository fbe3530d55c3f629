#include "host/layout/list_encoding.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <string>

#include "host/process/signals.h"
#include "host/text/code_page_text.h"
#include "platform/file.h"
#include "platform/text_lines.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t looked_at = 64 * 1024;

// Bytes that are half-width katakana in code page 932, and what of UTF-8 begins with some of them.
constexpr unsigned char lowest_katakana = 0xA1;
constexpr unsigned char last_lead_of_latin_1 = 0xC3;

bool is_letter(char byte) { return std::isalpha(static_cast<unsigned char>(byte)) != 0; }

// Whether a character of UTF-8 is likely one. Two bytes that could be katakana tell little, unless
// they are a letter of western Europe, or are in a word of other letters.
bool is_evidence(std::string_view text, std::size_t place, std::size_t size) {
  if (size > 2 || static_cast<unsigned char>(text[place + 1]) < lowest_katakana ||
      static_cast<unsigned char>(text[place]) <= last_lead_of_latin_1) {
    return true;
  }
  const std::size_t next = place + size;
  return (place > 0 && is_letter(text[place - 1])) || (next < text.size() && is_letter(text[next]));
}

// What is known of a text so far.
struct Look {
  bool is_utf8 = true;
  bool has_evidence = false;
};

// Looks at a further piece, which does not begin in the middle of a character. `is_cut` as above.
void look_at(std::string_view text, bool is_cut, Look& look) {
  for (std::size_t place = 0; place < text.size();) {
    if (platform::is_ascii(text[place])) {
      ++place;
      continue;
    }
    const std::string_view rest = text.substr(place);
    const std::size_t size = platform::first_character_size(rest);
    if (size == 0) {
      const bool is_end = is_cut && rest.size() < platform::character_size(rest.front()) &&
                          std::all_of(rest.begin() + 1, rest.end(), platform::is_continuation);
      look.is_utf8 = look.is_utf8 && is_end;
      return;
    }
    look.has_evidence = look.has_evidence || is_evidence(text, place, size);
    place += size;
  }
}

// The first character of a line beyond ASCII, or only one that the code page lacks.
std::optional<MisreadCharacter> first_in_line(std::string_view line, bool is_lacking) {
  const auto first = std::find_if_not(line.begin(), line.end(),
                                      [](char byte) { return platform::is_ascii(byte); });
  if (first == line.end()) return std::nullopt;
  auto offset = static_cast<std::size_t>(first - line.begin());
  if (is_lacking && exact_code_page_text(line, &offset)) return std::nullopt;
  const std::string_view before = line.substr(0, offset);
  line.remove_prefix(offset);
  MisreadCharacter character;
  character.place = 1 + std::count_if(before.begin(), before.end(),
                                      [](char byte) { return !platform::is_continuation(byte); });
  character.text = line.substr(0, platform::first_character_size(line));
  character.is_in_code_page = !is_lacking;
  return character;
}

// The same of a list. Its line is counted as an editor does: the reader of the module counts the
// pieces of a long line, and cuts characters.
std::optional<MisreadCharacter> first_character(const std::string& path, bool is_lacking) {
  std::optional<MisreadCharacter> found;
  std::int64_t number = 0;
  platform::read_line_pieces(path, [&](std::string_view piece) {
    while (!piece.empty() && !found) {
      check_interruption();
      ++number;
      found = first_in_line(platform::take_line(piece), is_lacking);
    }
    return !found;
  });
  check_interruption();
  if (found) found->line = number;
  return found;
}

// What comes out of a pipe would be gone for the one who generates.
bool may_be_looked_at(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

bool looks_like_utf8(std::string_view text, bool is_cut) {
  Look look;
  look_at(text, is_cut, look);
  return look.is_utf8 && look.has_evidence;
}

bool file_looks_like_utf8(const std::string& path) {
  if (!may_be_looked_at(path)) return false;
  platform::File file;
  std::string text(looked_at, '\0');
  std::size_t size = 0;
  if (file.open_for_reading(path, platform::Sharing::unlocked) != platform::FileCause::none) {
    return false;
  }
  file.read(text.data(), text.size(), size);
  text.resize(size);
  return looks_like_utf8(text, size == looked_at);
}

std::optional<MisreadCharacter> find_misread_character(const std::string& path) {
  if (!may_be_looked_at(path)) return std::nullopt;
  Look look;
  platform::read_line_pieces(path, [&](std::string_view piece) {
    look_at(piece, false, look);
    return look.is_utf8;
  });
  check_interruption();
  if (!look.is_utf8 || !look.has_evidence) return std::nullopt;
  const auto lacking = first_character(path, true);
  return lacking ? lacking : first_character(path, false);
}

}  // namespace korvex::host
