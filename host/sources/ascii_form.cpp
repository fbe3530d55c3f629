#include "host/sources/ascii_form.h"

#include "host/sources/character_map.h"

namespace korvex::sources {
namespace {

// The ASCII letters of characters from a first one on; "." for those that have none or several.
struct Block {
  char32_t first;
  std::string_view letters;
};

constexpr Block blocks[] = {
    {0x00C0,
     "AAAAAA.CEEEEIIIIDNOOOOO.OUUUUY..aaaaaa.ceeeeiiiidnooooo.ouuuuy.yAaAaAaCcCcCcCcDd"
     "DdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi..JjKkkLlLlLl..LlNnNnNn.NnOoOoOo..RrRrRrSsSsSs"
     "SsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzsbB....OCc.D....EEFfG...IKkl..NnOOo..Pp.....tTtTU"
     "u.VYyZz......................AaIiOoUuUuUuUuUueAaAa..GgGgKkOoOo..j...Gg..NnAa...."
     "AaAaEeEeIiIiOoOoRrRrUuUuSsTt..Hh.d..ZzAaEeOoOoOoOoYylntj..ACcLTsz..BU.EeJj..RrYy"},
    {0x1E00,
     "AaBbBbBbCcDdDdDdDdDdEeEeEeEeEeFfGgHhHhHhHhHhIiIiKkKkKkLlLlLlLlMmMmMmNnNnNnNnOoOo"
     "OoOoPpPpRrRrRrRrSsSsSsSsSsTtTtTtTtUuUuUuUuUuVvVvWwWwWwWwWwXxXxYyZzZzZzhtwy.sss.."
     "AaAaAaAaAaAaAaAaAaAaAaAaEeEeEeEeEeEeEeEeIiIiOoOoOoOoOoOoOoOoOoOoOoOoUuUuUuUuUuUu"
     "UuYyYyYyYy......"},
};

struct AsciiForm {
  char32_t character;
  std::string_view form;
};

constexpr AsciiForm ascii_forms[] = {
    {0x00A0, " "},  {0x00AB, "\""},  {0x00B7, "."},  {0x00BB, "\""}, {0x00C6, "AE"}, {0x00DE, "Th"},
    {0x00DF, "ss"}, {0x00E6, "ae"},  {0x00FE, "th"}, {0x0132, "IJ"}, {0x0133, "ij"}, {0x0152, "OE"},
    {0x0153, "oe"}, {0x01C4, "DZ"},  {0x01C5, "Dz"}, {0x01C6, "dz"}, {0x01C7, "LJ"}, {0x01C8, "Lj"},
    {0x01C9, "lj"}, {0x01CA, "NJ"},  {0x01CB, "Nj"}, {0x01CC, "nj"}, {0x01F1, "DZ"}, {0x01F2, "Dz"},
    {0x01F3, "dz"}, {0x1E9E, "SS"},  {0x2010, "-"},  {0x2011, "-"},  {0x2013, "-"},  {0x2014, "-"},
    {0x2018, "'"},  {0x2019, "'"},   {0x201A, "'"},  {0x201B, "'"},  {0x201C, "\""}, {0x201D, "\""},
    {0x201E, "\""}, {0x2026, "..."}, {0x202F, " "},  {0x2212, "-"},  {0x3000, " "}};

// The full-width forms of all that ASCII shows.
constexpr char32_t first_full_width = 0xFF01;
constexpr char32_t last_full_width = 0xFF5E;

void append_ascii_form(std::string& out, char32_t character) {
  if (character >= first_full_width && character <= last_full_width) {
    out += static_cast<char>('!' + static_cast<char>(character - first_full_width));
    return;
  }
  for (const Block& block : blocks) {
    if (character < block.first || character - block.first >= block.letters.size()) continue;
    const char letter = block.letters[character - block.first];
    if (letter != '.') {
      out += letter;
      return;
    }
  }
  for (const AsciiForm& form : ascii_forms) {
    if (form.character == character) out += form.form;
  }
}

}  // namespace

std::string ascii_form(std::string_view text) {
  return in_place_of(
      text, [](char c) { return c; }, append_ascii_form);
}

}  // namespace korvex::sources
