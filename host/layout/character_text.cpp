#include "host/layout/character_text.h"

#include "host/layout/own_text.h"
#include "host/text/code_page_text.h"
#include "platform/codepage.h"

namespace korvex::host {

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
