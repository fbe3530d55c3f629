#include "host/layout/list_encoding.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/bytes.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

TEST(ListEncoding, KnowsUtf8ByItsShape) {
  struct Row {
    std::string text;
    bool whole;  // as a whole text
    bool cut;    // as the beginning of one
  };
  const Row rows[] = {
      {"", false, false},
      {"plain ASCII\n", false, false},
      {"é", true, true},
      {"a\n名前\n", true, true},
      {"\xEF\xBB\xBFplain", true, true},
      {"\xF0\x9F\x98\x80", true, true},
      // Ended inside of a character.
      {"名\xE5\x89", false, true},
      {"名\xF0\x9F\x98", false, true},
      // The first byte of a character tells nothing yet.
      {"a\xE5", false, false},
      {"\xE5n", false, false},
      {"名\x80", false, false},
      {"\xF8\x80\x80\x80\x80", false, false},
      {test::cp932("名前"), false, false},
      {test::cp932("ｱｲｳ"), false, false},
      {test::cp932("日本語の表"), false, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(looks_like_utf8(row.text, false), row.whole) << row.text;
    EXPECT_EQ(looks_like_utf8(row.text, true), row.cut) << row.text;
  }
}

}  // namespace
}  // namespace korvex::host
