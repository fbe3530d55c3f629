#include <gtest/gtest.h>

#include "dialogs/rules/explanations.h"
#include "dialogs/rules/format_precheck.h"
#include "dialogs/rules/initial_settings.h"
#include "support/bytes.h"
#include "support/table.h"

// What the dialogs' rules read from a format and write about it.
namespace korvex::test {
namespace {

TEST(DefaultFormatTest, FollowsTheAttribute) {
  // The item, with "low" for the least number that there is, and the format; some have none.
  for (const auto& [item, format] : table<2>(R"(
      1 1 9 4              | %4S
      2 1 9 6              | %5S
      7 0 3                | %3S
      4 0 9 9              | %9U
      5 1 9 9 2            | %7.2D
      18 1 9 19            | %18D
      14 0 9 40 10         | %8.10U
      14 0 9 40 20         | %0.18U
      11 0 20 10           | %10N
      12 0 65              | %64N
      19 0 200             | %200S
      24 0 2 5             | %5U
      30 1 9 7 2           | %5.2D
      28 0 10 8            | %4YMD
      31 0 8 6             | %T
      32 0 19 15           | %TS
      8 0 9 9              |
      33 0 9 9             |
      1 1 9 -1             |
      19 0 -2147483648     |
      4 0 9 -2147483648    |
      4 0 9 5 -1           |
      4 0 9 5 6            |
  )")) {
    EXPECT_EQ(default_format(item_of(item)), format) << item;
  }
}

TEST(ExplanationsTest, TellWhatTheDirectivesOfAFormatWrite) {
  for (const auto& [format, text] : table<2>(R"(
      %D                | %D: a number with its sign, for example +1
      %3.2U             | %3.2U: a number without a sign, for example 000.01
      %.2U              | %.2U: a number without a sign, for example 0.01
      %TS               | %TS: a date and a time, for example 20240131 235959
      %T                | %T: a time of day, for example 235959
      %4YMD             | %4YMD: a date of the calendar, for example 20240131
      %YMA              | %YMA: a date, with 31 days in every month, for example 240131
      %2N               | %2N: full-width characters, for example ああ
      '%T'              | fixed text: every value is the same
  )")) {
    EXPECT_EQ(explain_format(format), text) << format;
  }
  // Equal directives once, and nothing that is in fixed text.
  EXPECT_EQ(explain_format(cp932("'表%9U'% 2 S%2S'%T'%3s")),
            "%2S: upper-case letters, for example AA\n%3s: lower-case letters, for example aaa");
  // What nobody can see is cut.
  std::string longest;
  for (int i = 0; i < 64; ++i) longest += "あ";
  EXPECT_TRUE(explain_format("%99999999999999999999N").ends_with(", for example " + longest));
}

std::string quoted(std::size_t size) { return "'" + std::string(size, 'A') + "'"; }

TEST(FormatPrecheckTest, CountsThePartsOrRefusesWithTheFirstRuleBroken) {
  const std::string nines(250, '9');
  const std::string half = nines.substr(0, 120);
  struct Row {
    std::int32_t code, variable, fixed;
    std::vector<std::string> formats;
  };
  const Row rows[] = {
      {0, 1, 0, {" % 5 S ", "%YMD", "%4YMA", "%T", "%TS", "%.2U", "%-5s", "%128N", "%100.28D"}},
      {0, 1, 1, {"%5S'AB'", quoted(127) + "%D", "%20S" + quoted(108), cp932("'表ソ能'%S")}},
      // Only the first directive is looked at, and a percent sign in fixed text begins nothing.
      {0, 2, 0, {"%S%999X", "%%5S"}},
      {0, 2, 2, {"'AB'%5S'CD'%T"}},
      {0, 0, 1, {"''", "' '", quoted(128), "'100%'"}},
      {0, 0, 3, {"'A''B''C'"}},
      {0, 1, 1, {"'5%'%3U"}},
      {-35, 7, 7, {"", "   ", "5S", "'AB'5S", "%5S'AB", "'", "'A''", "'A''B''C''D'X"}},
      {-11, 7, 7, {"'A''B''C''D'", "'A''B''C'" + quoted(126)}},
      {-52, 7, 7, {quoted(129), "%X" + quoted(129), quoted(128) + "%D", "%20S" + quoted(109)}},
      {-52, 7, 7, {"%129S", "%129YMD", "%129TS", "%129T", "%100.30D", "%5.D", "%.D", "%5.2.1D"}},
      {-52,
       7,
       7,
       {"%5..1D", "%" + nines + "S", "%" + nines + "YMD", "%" + half + "." + half + "U"}},
      {-7, 7, 7, {"%", "%%", "%5X", "%5'A'%S", "%YM", "%d"}},
  };
  for (const Row& row : rows) {
    for (const std::string& format : row.formats) {
      const Result<FormatParts> checked = precheck_format(format);
      EXPECT_EQ(checked.code(), row.code) << format;
      const FormatParts parts = checked.value_or({7, 7});
      EXPECT_EQ(parts.variable, row.variable) << format;
      EXPECT_EQ(parts.fixed, row.fixed) << format;
    }
  }
}

}  // namespace
}  // namespace korvex::test
