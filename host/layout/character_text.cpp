#include "host/layout/character_text.h"

#include <algorithm>

#include "host/text/code_page_text.h"
#include "platform/codepage.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

// The characters in front of a byte of a UTF-8 text.
std::size_t characters_before(std::string_view text, std::size_t offset) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset),
                    [](char byte) { return !platform::is_continuation(byte); }));
}

// The character that begins at a byte of a UTF-8 text.
std::string_view character_at(std::string_view text, std::size_t offset) {
  std::size_t size = 1;
  while (offset + size < text.size() && platform::is_continuation(text[offset + size])) ++size;
  return text.substr(offset, size);
}

}  // namespace

std::string character_text(TableReader& reader, std::string_view key,
                           const std::optional<std::string>& text, std::size_t longest,
                           std::vector<LayoutError>* replaced) {
  if (!text) return {};
  const auto reject = [&](const std::string& what) {
    reader.report(reader.place(key), std::string(key) + what);
    return std::string();
  };
  const auto named_character = [&](std::size_t offset) {
    return " has the character \"" + platform::printable(character_at(*text, offset)) +
           "\" at place " + std::to_string(characters_before(*text, offset) + 1);
  };
  const auto reject_character = [&](std::size_t offset, const std::string& expected) {
    return reject(named_character(offset) + ", expected " + expected);
  };
  // A zero ends a field, a line feed a record: neither can be inside a value.
  const std::size_t breaking = text->find_first_of(std::string_view("\0\n", 2));
  if (breaking != std::string::npos) return reject_character(breaking, "neither zero nor line end");
  std::size_t bad_offset = 0;
  const auto converted = platform::from_utf8(*text, &bad_offset);
  if (!converted) return reject_character(bad_offset, "characters of code page 932");
  if (converted->size() > longest) {
    return reject(" has " + std::to_string(converted->size()) +
                  " bytes in code page 932, expected at most " + std::to_string(longest));
  }
  if (replaced != nullptr && !exact_code_page_text(*text, &bad_offset)) {
    replaced->push_back({reader.place(key), std::string(key) + named_character(bad_offset) +
                                                ", for which another one of code page 932 would "
                                                "be stored, expected that one"});
  }
  return *converted;
}

}  // namespace korvex::host
