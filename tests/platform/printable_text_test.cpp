#include "platform/printable_text.h"

#include <gtest/gtest.h>

namespace korvex::platform {
namespace {

TEST(PrintableText, OnlyCharactersReachTheTerminal) {
  const std::pair<std::string_view, const char*> rows[] = {
      {"plain äあ😀", "plain äあ😀"},
      {std::string_view("\0\x1B[2J\r\n\t\x7F", 9), "\\x00\\x1B[2J\\x0D\\x0A\\x09\\x7F"},
      {"\xC2\x9B\xC2\xA0", "\\x9B\xC2\xA0"},
      {"\x9B\xFF\xC2", "\\x9B\\xFF\\xC2"},
      // Too long for the escape character, half of a pair, above the last character.
      {"\xE0\x80\x9B", "\\xE0\\x80\\x9B"},
      {"\xED\xA0\x80", "\\xED\\xA0\\x80"},
      {"\xF4\x90\x80\x80", "\\xF4\\x90\\x80\\x80"},
  };
  for (const auto& [text, shown] : rows) {
    EXPECT_EQ(printable(text), shown);
    EXPECT_EQ(printable(printable(text)), shown) << "twice is once";
  }
  EXPECT_EQ(printable_lines("a\x1B\n\nb"), "a\\x1B\n\nb");
  EXPECT_EQ(printable_from_code_page("\x82\xA0\x1B\xC8\xBA"), "あ\\x1Bﾈｺ");
}

}  // namespace
}  // namespace korvex::platform
