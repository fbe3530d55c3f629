#include "host/layout/item_texts.h"

#include "host/layout/own_text.h"
#include "host/text/code_page_text.h"
#include "platform/codepage.h"

namespace korvex::host {

std::string item_text(TableReader& reader, const Layout& layout, std::string_view key,
                      std::size_t longest, std::vector<LayoutError>* beyond) {
  const auto text = reader.text(key);
  if (!layout.is_utf8) return platform::to_utf8(character_text(reader, key, text, longest));
  if (!text) return {};
  if (const auto bad = find_bad_character(layout, *text)) {
    reader.report(reader.place(key), std::string(key) + *bad);
    return {};
  }
  if (const std::size_t count = character_count(*text); count > longest) {
    reader.report(reader.place(key), std::string(key) + " has " + std::to_string(count) +
                                         " characters, expected at most " +
                                         std::to_string(longest));
    return {};
  }
  std::size_t bad_offset = 0;
  if (beyond != nullptr && !platform::from_utf8(*text, &bad_offset)) {
    beyond->push_back({reader.place(key), std::string(key) + named_character(*text, bad_offset) +
                                              ", which code page 932 lacks; \"korvex export\" "
                                              "writes it"});
  }
  return *text;
}

bool is_named(const LayoutItem& item, std::string_view name) {
  if (item.name == name) return true;
  const auto in_code_page = platform::from_utf8(name);
  return in_code_page && item.name == platform::to_utf8(*in_code_page);
}

std::string character_text(TableReader& reader, std::string_view key,
                           const std::optional<std::string>& text, std::size_t longest,
                           std::vector<LayoutError>* replaced) {
  if (!text) return {};
  const auto reject = [&](const std::string& what) {
    reader.report(reader.place(key), std::string(key) + what);
    return std::string();
  };
  const auto reject_character = [&](std::size_t offset, const std::string& expected) {
    return reject(named_character(*text, offset) + ", expected " + expected);
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
    replaced->push_back({reader.place(key), std::string(key) + named_character(*text, bad_offset) +
                                                ", for which another one of code page 932 would "
                                                "be stored, expected that one"});
  }
  return *converted;
}

}  // namespace korvex::host
