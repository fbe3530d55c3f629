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

TEST(ListEncoding, LooksAtTheBeginningOfFiles) {
  const test::TempFolder folder;
  constexpr std::size_t looked_at = 64 * 1024;
  // A character of three bytes at every place around the end of what is read.
  for (std::size_t before = looked_at - 4; before <= looked_at; ++before) {
    test::write_file(folder.file("list"), "é" + std::string(before - 2, 'a') + "名");
    EXPECT_TRUE(file_looks_like_utf8(folder.file("list"))) << before;
  }
  test::write_file(folder.file("list"), std::string(looked_at, 'a') + "名");
  EXPECT_FALSE(file_looks_like_utf8(folder.file("list")));
  EXPECT_FALSE(file_looks_like_utf8(folder.path()));
  EXPECT_FALSE(file_looks_like_utf8(folder.file("none")));
}

}  // namespace
}  // namespace korvex::host
