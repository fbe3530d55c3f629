#include "host/layout/source_place.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::string_view blanks_and_lines = " \t\r\n";

std::size_t byte_at(std::string_view text, SourcePlace place) {
  std::size_t byte = 0;
  for (std::uint32_t line = 1; line < place.line; ++line) {
    byte = std::min(text.find('\n', byte), text.size() - 1) + 1;
  }
  for (std::uint32_t column = 1; column < place.column && byte < text.size(); ++column) {
    do ++byte;
    while (byte < text.size() && platform::is_continuation(text[byte]));
  }
  return byte;
}

// What stands for some bytes of a string's value.
struct Written {
  std::size_t size = 1;   // in the text
  std::size_t bytes = 1;  // of the value
};

// An escape with the digits of a character's number.
Written numbered(std::string_view escape, std::size_t digits) {
  constexpr int hexadecimal = 16;
  const std::string_view number = escape.substr(2, digits);
  std::uint32_t code = 0;
  std::from_chars(number.data(), number.data() + number.size(), code, hexadecimal);
  const std::size_t bytes = code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  return {2 + number.size(), bytes};
}

Written escape_at(std::string_view rest) {
  switch (rest.size() < 2 ? '\0' : rest[1]) {
    case 'x':
      return numbered(rest, 2);
    case 'u':
      return numbered(rest, 4);
    case 'U':
      return numbered(rest, 8);
    case ' ':
    case '\t':
    case '\r':
    case '\n':
      // The end of a line that goes on after all blanks.
      return {std::min(rest.find_first_not_of(blanks_and_lines, 1), rest.size()), 0};
    default:
      return {2, 1};
  }
}

}  // namespace

SourcePlace place_at(std::string_view text, std::size_t byte) {
  const std::string_view before = text.substr(0, byte);
  const std::string_view line = before.substr(before.rfind('\n') + 1);
  const auto characters =
      std::count_if(line.begin(), line.end(), [](char c) { return !platform::is_continuation(c); });
  return {static_cast<std::uint32_t>(std::count(before.begin(), before.end(), '\n') + 1),
          static_cast<std::uint32_t>(characters + 1)};
}

SourcePlace place_in_string(std::string_view text, SourcePlace string, std::size_t byte) {
  std::size_t at = byte_at(text, string);
  if (at >= text.size()) return string;
  const char quote = text[at];
  const bool has_lines = text.substr(at, 3) == std::string(3, quote);
  at += has_lines ? 3 : 1;
  // A line end right after the opening is none of the value's.
  if (has_lines && text.substr(at).starts_with("\r\n")) {
    at += 2;
  } else if (has_lines && text.substr(at).starts_with('\n')) {
    ++at;
  }
  for (std::size_t passed = 0; passed < byte && at < text.size();) {
    Written written;
    if (quote == '"' && text[at] == '\\') {
      written = escape_at(text.substr(at));
    } else if (text.substr(at).starts_with("\r\n")) {
      written.size = 2;
    }
    at += written.size;
    passed += written.bytes;
  }
  return place_at(text, std::min(at, text.size()));
}

}  // namespace korvex::host
