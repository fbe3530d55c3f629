#include "host/sources/letter_forms.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "host/sources/character_map.h"

namespace korvex::sources {
namespace {

// Every `step`-th character from `first` to `last` is a capital; its small letter comes `distance`
// after it.
struct Capitals {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t distance;
};

constexpr Capitals capitals[] = {
    {0x0041, 0x005A, 1, 32},     {0x00C0, 0x00D6, 1, 32},     {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},      {0x0132, 0x0136, 2, 1},      {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},      {0x0178, 0x0178, 1, -121},   {0x0179, 0x017D, 2, 1},
    {0x0181, 0x0181, 1, 210},    {0x0182, 0x0184, 2, 1},      {0x0186, 0x0186, 1, 206},
    {0x0187, 0x0187, 1, 1},      {0x0189, 0x018A, 1, 205},    {0x018B, 0x018B, 1, 1},
    {0x018E, 0x018E, 1, 79},     {0x018F, 0x018F, 1, 202},    {0x0190, 0x0190, 1, 203},
    {0x0191, 0x0191, 1, 1},      {0x0193, 0x0193, 1, 205},    {0x0194, 0x0194, 1, 207},
    {0x0196, 0x0196, 1, 211},    {0x0197, 0x0197, 1, 209},    {0x0198, 0x0198, 1, 1},
    {0x019C, 0x019C, 1, 211},    {0x019D, 0x019D, 1, 213},    {0x019F, 0x019F, 1, 214},
    {0x01A0, 0x01A4, 2, 1},      {0x01A6, 0x01A6, 1, 218},    {0x01A7, 0x01A7, 1, 1},
    {0x01A9, 0x01A9, 1, 218},    {0x01AC, 0x01AC, 1, 1},      {0x01AE, 0x01AE, 1, 218},
    {0x01AF, 0x01AF, 1, 1},      {0x01B1, 0x01B2, 1, 217},    {0x01B3, 0x01B5, 2, 1},
    {0x01B7, 0x01B7, 1, 219},    {0x01B8, 0x01B8, 1, 1},      {0x01BC, 0x01BC, 1, 1},
    {0x01C4, 0x01C4, 1, 2},      {0x01C7, 0x01C7, 1, 2},      {0x01CA, 0x01CA, 1, 2},
    {0x01CD, 0x01DB, 2, 1},      {0x01DE, 0x01EE, 2, 1},      {0x01F1, 0x01F1, 1, 2},
    {0x01F4, 0x01F4, 1, 1},      {0x01F6, 0x01F6, 1, -97},    {0x01F7, 0x01F7, 1, -56},
    {0x01F8, 0x021E, 2, 1},      {0x0220, 0x0220, 1, -130},   {0x0222, 0x0232, 2, 1},
    {0x023A, 0x023A, 1, 10795},  {0x023B, 0x023B, 1, 1},      {0x023D, 0x023D, 1, -163},
    {0x023E, 0x023E, 1, 10792},  {0x0241, 0x0241, 1, 1},      {0x0243, 0x0243, 1, -195},
    {0x0244, 0x0244, 1, 69},     {0x0245, 0x0245, 1, 71},     {0x0246, 0x024E, 2, 1},
    {0x0370, 0x0372, 2, 1},      {0x0376, 0x0376, 1, 1},      {0x037F, 0x037F, 1, 116},
    {0x0386, 0x0386, 1, 38},     {0x0388, 0x038A, 1, 37},     {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63},     {0x0391, 0x03A1, 1, 32},     {0x03A3, 0x03AB, 1, 32},
    {0x03CF, 0x03CF, 1, 8},      {0x03D8, 0x03EE, 2, 1},      {0x03F7, 0x03F7, 1, 1},
    {0x03F9, 0x03F9, 1, -7},     {0x03FA, 0x03FA, 1, 1},      {0x03FD, 0x03FF, 1, -130},
    {0x0400, 0x040F, 1, 80},     {0x0410, 0x042F, 1, 32},     {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},      {0x04C0, 0x04C0, 1, 15},     {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},      {0x0531, 0x0556, 1, 48},     {0x10A0, 0x10C5, 1, 7264},
    {0x10C7, 0x10C7, 1, 7264},   {0x10CD, 0x10CD, 1, 7264},   {0x13A0, 0x13EF, 1, 38864},
    {0x13F0, 0x13F5, 1, 8},      {0x1C90, 0x1CBA, 1, -3008},  {0x1CBD, 0x1CBF, 1, -3008},
    {0x1E00, 0x1E94, 2, 1},      {0x1EA0, 0x1EFE, 2, 1},      {0x1F08, 0x1F0F, 1, -8},
    {0x1F18, 0x1F1D, 1, -8},     {0x1F28, 0x1F2F, 1, -8},     {0x1F38, 0x1F3F, 1, -8},
    {0x1F48, 0x1F4D, 1, -8},     {0x1F59, 0x1F5F, 2, -8},     {0x1F68, 0x1F6F, 1, -8},
    {0x1FB8, 0x1FB9, 1, -8},     {0x1FBA, 0x1FBB, 1, -74},    {0x1FC8, 0x1FCB, 1, -86},
    {0x1FD8, 0x1FD9, 1, -8},     {0x1FDA, 0x1FDB, 1, -100},   {0x1FE8, 0x1FE9, 1, -8},
    {0x1FEA, 0x1FEB, 1, -112},   {0x1FEC, 0x1FEC, 1, -7},     {0x1FF8, 0x1FF9, 1, -128},
    {0x1FFA, 0x1FFB, 1, -126},   {0x2132, 0x2132, 1, 28},     {0x2160, 0x216F, 1, 16},
    {0x2183, 0x2183, 1, 1},      {0x24B6, 0x24CF, 1, 26},     {0x2C00, 0x2C2F, 1, 48},
    {0x2C60, 0x2C60, 1, 1},      {0x2C62, 0x2C62, 1, -10743}, {0x2C63, 0x2C63, 1, -3814},
    {0x2C64, 0x2C64, 1, -10727}, {0x2C67, 0x2C6B, 2, 1},      {0x2C6D, 0x2C6D, 1, -10780},
    {0x2C6E, 0x2C6E, 1, -10749}, {0x2C6F, 0x2C6F, 1, -10783}, {0x2C70, 0x2C70, 1, -10782},
    {0x2C72, 0x2C72, 1, 1},      {0x2C75, 0x2C75, 1, 1},      {0x2C7E, 0x2C7F, 1, -10815},
    {0x2C80, 0x2CE2, 2, 1},      {0x2CEB, 0x2CED, 2, 1},      {0x2CF2, 0x2CF2, 1, 1},
    {0xA640, 0xA66C, 2, 1},      {0xA680, 0xA69A, 2, 1},      {0xA722, 0xA72E, 2, 1},
    {0xA732, 0xA76E, 2, 1},      {0xA779, 0xA77B, 2, 1},      {0xA77D, 0xA77D, 1, -35332},
    {0xA77E, 0xA786, 2, 1},      {0xA78B, 0xA78B, 1, 1},      {0xA78D, 0xA78D, 1, -42280},
    {0xA790, 0xA792, 2, 1},      {0xA796, 0xA7A8, 2, 1},      {0xA7AA, 0xA7AA, 1, -42308},
    {0xA7AB, 0xA7AB, 1, -42319}, {0xA7AC, 0xA7AC, 1, -42315}, {0xA7AD, 0xA7AD, 1, -42305},
    {0xA7AE, 0xA7AE, 1, -42308}, {0xA7B0, 0xA7B0, 1, -42258}, {0xA7B1, 0xA7B1, 1, -42282},
    {0xA7B2, 0xA7B2, 1, -42261}, {0xA7B3, 0xA7B3, 1, 928},    {0xA7B4, 0xA7C2, 2, 1},
    {0xA7C4, 0xA7C4, 1, -48},    {0xA7C5, 0xA7C5, 1, -42307}, {0xA7C6, 0xA7C6, 1, -35384},
    {0xA7C7, 0xA7C9, 2, 1},      {0xA7D0, 0xA7D0, 1, 1},      {0xA7D6, 0xA7D8, 2, 1},
    {0xA7F5, 0xA7F5, 1, 1},      {0xFF21, 0xFF3A, 1, 32},     {0x10400, 0x10427, 1, 40},
    {0x104B0, 0x104D3, 1, 40},   {0x10570, 0x1057A, 1, 39},   {0x1057C, 0x1058A, 1, 39},
    {0x1058C, 0x10592, 1, 39},   {0x10594, 0x10595, 1, 39},   {0x10C80, 0x10CB2, 1, 64},
    {0x118A0, 0x118BF, 1, 32},   {0x16E40, 0x16E5F, 1, 32},   {0x1E900, 0x1E921, 1, 34}};

struct CasePair {
  char32_t from;
  char32_t to;
};

using CasePairs = std::vector<CasePair>;

// Letters that have only one of the two directions; the dot of the capital is lost.
constexpr CasePair only_lower[] = {{U'\u0130', U'i'}, {U'\u1E9E', U'\u00DF'}};
constexpr CasePair only_upper[] = {
    {U'\u00B5', U'\u039C'}, {U'\u0131', U'I'}, {U'\u017F', U'S'}, {U'\u03C2', U'\u03A3'}};

CasePairs sorted(CasePairs pairs) {
  std::sort(pairs.begin(), pairs.end(),
            [](const CasePair& a, const CasePair& b) { return a.from < b.from; });
  return pairs;
}

CasePairs all_pairs() {
  CasePairs pairs;
  for (const Capitals& range : capitals) {
    for (char32_t capital = range.first; capital <= range.last; capital += range.step) {
      const auto small = static_cast<std::int32_t>(capital) + range.distance;
      pairs.push_back({capital, static_cast<char32_t>(small)});
    }
  }
  return pairs;
}

const CasePairs& to_lower() {
  static const CasePairs pairs = [] {
    CasePairs all = all_pairs();
    all.insert(all.end(), std::begin(only_lower), std::end(only_lower));
    return sorted(std::move(all));
  }();
  return pairs;
}

const CasePairs& to_upper() {
  static const CasePairs pairs = [] {
    CasePairs all = all_pairs();
    for (CasePair& pair : all) std::swap(pair.from, pair.to);
    all.insert(all.end(), std::begin(only_upper), std::end(only_upper));
    return sorted(std::move(all));
  }();
  return pairs;
}

char32_t mapped(const CasePairs& pairs, char32_t letter) {
  const auto found =
      std::lower_bound(pairs.begin(), pairs.end(), letter,
                       [](const CasePair& pair, char32_t wanted) { return pair.from < wanted; });
  return found != pairs.end() && found->from == letter ? found->to : letter;
}

constexpr char case_bit = 'a' - 'A';

}  // namespace

std::string lower_case(std::string_view text) {
  const auto ascii = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + case_bit) : c;
  };
  return in_place_of(text, ascii, [](std::string& out, char32_t character) {
    append_encoded(out, mapped(to_lower(), character));
  });
}

std::string upper_case(std::string_view text) {
  const auto ascii = [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - case_bit) : c;
  };
  return in_place_of(text, ascii, [](std::string& out, char32_t character) {
    if (character == U'\u00DF') {
      out += "SS";
    } else {
      append_encoded(out, mapped(to_upper(), character));
    }
  });
}

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
