#include "dialogs/explanations.h"

#include <gtest/gtest.h>

#include "support/bytes.h"

namespace korvex {
namespace {

TEST(Explanations, TellWhatTheDirectivesOfAFormatWrite) {
  const std::pair<std::string, std::string> rows[] = {
      {"%D", "%D: a number with its sign, for example +1"},
      {"%3.2U", "%3.2U: a number without a sign, for example 000.01"},
      {"%.2U", "%.2U: a number without a sign, for example 0.01"},
      {"%TS", "%TS: a date and a time, for example 20240131 235959"},
      {"%T", "%T: a time of day, for example 235959"},
      {"%4YMD", "%4YMD: a date of the calendar, for example 20240131"},
      {"%YMA", "%YMA: a date, with 31 days in every month, for example 240131"},
      {"%2N", "%2N: full-width characters, for example ああ"},
      // Equal directives once, and nothing that stands in fixed text.
      {test::cp932("'表%9U'") + "% 2 S%2S'%T'%3s",
       "%2S: upper-case letters, for example AA\n%3s: lower-case letters, for example aaa"},
      {"'%T'", "fixed text: every value is the same"},
      // What nobody can see is cut.
      {"%99999999999999999999N", "%99999999999999999999N: full-width characters, for example " +
                                     [] {
                                       std::string longest;
                                       for (int i = 0; i < 64; ++i) longest += "あ";
                                       return longest;
                                     }()},
  };
  for (const auto& [format, text] : rows) EXPECT_EQ(explain_format(format), text) << format;
}

}  // namespace
}  // namespace korvex
