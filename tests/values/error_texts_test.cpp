#include "values/error_texts.h"

#include <map>
#include <regex>

#include "support/bytes.h"

namespace korvex {
namespace {

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

// The messages that users are told of, by code, with the layout word as %s.
std::map<std::int32_t, std::string> documented_messages() {
  std::map<std::int32_t, std::string> messages;
  const std::string page = test::read_file(KORVEX_DOCS "/errors.md");
  const std::regex row(R"re(\n\| (-\d+) \| (\d+) \| "(.*?)" \|)re");
  for (std::sregex_iterator each(page.begin(), page.end(), row), end; each != end; ++each) {
    const int code = std::stoi((*each)[1]);
    const bool is_of_a_line = code >= -134 && code <= -125;
    messages[code] = (is_of_a_line ? "%d line of a enum file " : (*each)[2].str() + ":") +
                     replaced((*each)[3], "<br>", "\n");
  }
  return messages;
}

TEST(ErrorTexts, EveryCodeHasItsNumberAndWording) {
  const auto messages = documented_messages();
  ASSERT_EQ(messages.size(), 113u);
  for (std::int32_t code = -150; code <= 5; ++code) {
    const auto known = messages.find(code);
    const std::string number = std::to_string(99000 + std::abs(code)) + ":";
    const std::string message = known == messages.end() ? number : known->second;
    for (const std::int32_t layout : {0, 1, 2, 3}) {
      const std::string about = code == -70 || code == -71 ? "Table" : "Column";
      std::string text;
      append_error_text(ErrorCode{code}, LayoutKind{layout}, text);
      EXPECT_EQ(text, replaced(message, "%s", layout == 1 ? "Item" : about)) << layout;
    }
  }
}

TEST(ErrorTexts, AppendsExceptForEnumerationLines) {
  std::string text = "before ";
  append_error_text(ErrorCode{-2}, layout_kind::record_file, text);
  EXPECT_EQ(text, "before 99002:Failed to open the control file.");
  append_error_text(ErrorCode{-125}, layout_kind::record_file, text);
  EXPECT_EQ(text, "%d line of a enum file Data longer than Item has been defined.");
  append_error_text(ErrorCode{-90}, layout_kind::record_file, text);
  EXPECT_EQ(text, "%d line of a enum file Data longer than Item has been defined.99090:");
  text.clear();
  append_error_text(ErrorCode{INT32_MIN}, layout_kind::record_file, text);
  EXPECT_EQ(text, "2147582648:") << "any code is safe";
}

TEST(ErrorTexts, FillsTheFirstPlaceholderOnly) {
  EXPECT_EQ(fill_number("a %ld b %d", 18'446'744'073'709'551'615u), "a 18446744073709551615 b %d");
  EXPECT_EQ(fill_number("%d and %ld", 7), "7 and %ld");
  EXPECT_EQ(fill_number("100 % done %s", 7), "100 % done %s");
  EXPECT_EQ(fill_number("", 7), "");
}

}  // namespace
}  // namespace korvex
