#include <array>
#include <cctype>
#include <utility>

#include "host/guesses/meaning.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> spelled_out = {{
    {"ä", "ae"},
    {"ö", "oe"},
    {"ü", "ue"},
    {"ß", "ss"},
    {"Ä", "Ae"},
    {"Ö", "Oe"},
    {"Ü", "Ue"},
}};

std::string in_ascii(std::string_view name) {
  std::string text(name);
  for (const auto& [letter, letters] : spelled_out) {
    for (std::size_t at = text.find(letter); at != std::string::npos; at = text.find(letter, at)) {
      text.replace(at, letter.size(), letters);
    }
  }
  return text;
}

enum class Sign { small, capital, digit, other, apart };

Sign sign_of(char byte) {
  const auto letter = static_cast<unsigned char>(byte);
  if (letter >= 0x80) return Sign::other;
  if (platform::is_digit(byte)) return Sign::digit;
  if (std::isupper(letter) != 0) return Sign::capital;
  return std::islower(letter) != 0 ? Sign::small : Sign::apart;
}

bool begins_word(Sign before, Sign now, Sign after) {
  if (now == Sign::capital) {
    return before == Sign::small || (before == Sign::capital && after == Sign::small);
  }
  return (now == Sign::digit) != (before == Sign::digit) ||
         (now == Sign::other) != (before == Sign::other);
}

}  // namespace

std::vector<std::string> name_words(std::string_view name) {
  const std::string text = in_ascii(name);
  std::vector<std::string> words;
  Sign before = Sign::apart;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const Sign now = sign_of(text[i]);
    const Sign after = i + 1 < text.size() ? sign_of(text[i + 1]) : Sign::apart;
    if (now != Sign::apart) {
      if (before == Sign::apart || begins_word(before, now, after)) words.emplace_back();
      words.back() += static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
    }
    before = now;
  }
  return words;
}

}  // namespace korvex::host
