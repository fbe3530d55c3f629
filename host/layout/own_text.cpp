#include "host/layout/own_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "host/text/code_page_text.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

std::size_t character_count(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return !platform::is_continuation(byte); }));
}

std::string named_character(std::string_view text, std::size_t offset) {
  std::size_t size = 1;
  while (offset + size < text.size() && platform::is_continuation(text[offset + size])) ++size;
  return " has the character \"" + platform::printable(text.substr(offset, size)) + "\" at place " +
         std::to_string(character_count(text.substr(0, offset)) + 1);
}

std::optional<std::string> find_bad_character(const Layout& layout, std::string_view text) {
  const std::size_t breaking = text.find_first_of(std::string_view("\0\n", 2));
  if (breaking != std::string_view::npos) {
    return named_character(text, breaking) + ", expected neither zero nor line end";
  }
  std::size_t bad_offset = 0;
  if (layout.is_utf8 || exact_code_page_text(text, &bad_offset)) return std::nullopt;
  return named_character(text, bad_offset) +
         ", expected characters of code page 932, or encoding = \"utf-8\" in [layout]";
}

std::optional<std::string> number_text(const toml::node& node) {
  if (const auto* text = node.as_string()) return text->get();
  std::array<char, 64> digits;
  std::to_chars_result end = {};
  if (const auto* whole = node.as_integer()) {
    end = std::to_chars(digits.begin(), digits.end(), whole->get());
  } else if (const auto* number = node.as_floating_point()) {
    end = std::to_chars(digits.begin(), digits.end(), number->get());
  } else {
    return std::nullopt;
  }
  return std::string(digits.begin(), end.ptr);
}

std::optional<PlacedText> placed_text(TableReader& reader, std::string_view key) {
  auto text = reader.text(key);
  if (!text) return std::nullopt;
  return PlacedText{std::move(*text), reader.place(key)};
}

std::vector<PlacedText> placed_texts(TableReader& reader, const Layout& layout,
                                     std::string_view key) {
  constexpr std::string_view expected = "an array of strings and integers, at least one";
  const toml::node* node = reader.find(key);
  if (node == nullptr) return {};
  const toml::array* array = node->as_array();
  if (array == nullptr || array->empty()) {
    reader.report_type(key, *node, expected);
    return {};
  }
  std::vector<PlacedText> texts;
  for (const toml::node& element : *array) {
    if (const auto* text = element.as_string()) {
      texts.push_back({text->get(), place_of(element)});
    } else if (const auto* number = element.as_integer()) {
      texts.push_back({std::to_string(number->get()), place_of(element)});
    } else {
      reader.report(place_of(element), std::string(key) + " has " + describe(element) +
                                           ", expected a string or an integer");
      continue;
    }
    if (const auto bad = find_bad_character(layout, texts.back().text)) {
      reader.report(texts.back().place, std::string(key) + *bad);
    }
  }
  return texts;
}

}  // namespace korvex::host
