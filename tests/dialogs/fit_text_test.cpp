#include "dialogs/fit_text.h"

#include <gtest/gtest.h>

namespace korvex::test {
namespace {

int one_a_byte(std::string_view text) { return static_cast<int>(text.size()); }

TEST(FitTextTest, CutsWhatIsTooWide) {
  struct Case {
    const char* what;
    std::string text;
    int width;
    int margin;
    std::string fitted;
  };
  // Every byte is one wide, so the dots and the byte behind them take four.
  const Case cases[] = {
      {"nothing", "", 0, 4, ""},
      {"just fits", "abcdef", 10, 4, "abcdef"},
      {"one too wide", "abcdefg", 10, 4, "ab..."},
      {"a wider margin", "abcdefghijklmnopq", 20, 12, "abcd..."},
      {"no room even for the dots", "abcdef", 3, 4, "..."},
      {"between two characters", "\x82\xA0\x82\xA2\x82\xA4", 5, 0, "..."},
      {"after a lead byte", "\x82\xA0\x82\xA2\x82\xA4\x82\xA6", 7, 0, "\x82\xA0..."},
      {"after a whole character", "a\x82\xA0\x82\xA2\x82\xA4\x82\xA6", 7, 0, "a\x82\xA0..."},
      {"after a trail byte that looks like a lead byte", "a\x83\x81\x83\x81\x83\x81\x83\x81", 7, 0,
       "a\x83..."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(fit_text(c.text, c.width, c.margin, one_a_byte), c.fitted) << c.what;
  }
}

TEST(FitTextTest, AddsTheDotsEvenWhenEverythingWasKept) {
  const auto wide_end = [](std::string_view text) {
    return one_a_byte(text) + (text.ends_with('W') ? 50 : 0);
  };
  EXPECT_EQ(fit_text("abW", 20, 4, wide_end), "abW...");
}

TEST(FitTextTest, IgnoresWhatNoListCouldShow) {
  EXPECT_EQ(fit_text(std::string(40000, 'a'), 100000, 4, one_a_byte), std::string(32767, 'a'));
  EXPECT_EQ(fit_text(std::string(40000, 'a'), 32767, 4, one_a_byte).size(), 32767u - 8 + 3);
}

}  // namespace
}  // namespace korvex::test
