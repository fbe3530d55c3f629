#include "dialogs/format_precheck.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/bytes.h"

namespace korvex {
namespace {

std::string quoted(std::size_t size) { return "'" + std::string(size, 'A') + "'"; }

TEST(FormatPrecheck, CountsThePartsOfWhatItAccepts) {
  struct Row {
    std::int32_t variable;
    std::int32_t fixed;
    std::vector<std::string> formats;
  };
  const Row rows[] = {
      {1, 0, {" % 5 S ", "%YMD", "%4YMA", "%T", "%TS", "%.2U", "%-5s", "%128N", "%100.28D"}},
      {1, 1, {"%5S'AB'", quoted(127) + "%D", "%20S" + quoted(108)}},
      {1, 1, {"'" + test::cp932("表ソ能") + "'%S"}},
      // Only the first directive is looked at.
      {2, 0, {"%S%999X", "%%5S"}},
      {2, 2, {"'AB'%5S'CD'%T"}},
      {0, 1, {"''", "' '", quoted(128)}},
      {0, 3, {"'A''B''C'"}},
      // A percent sign in fixed text begins nothing.
      {0, 1, {"'100%'"}},
      {1, 1, {"'5%'%3U"}},
  };
  for (const Row& row : rows) {
    for (const std::string& format : row.formats) {
      FormatParts parts;
      EXPECT_EQ(precheck_format(format, parts), 0) << format;
      EXPECT_EQ(parts.variable, row.variable) << format;
      EXPECT_EQ(parts.fixed, row.fixed) << format;
    }
  }
}

TEST(FormatPrecheck, RefusesWithTheCodeOfTheFirstRuleBroken) {
  const std::string nines(250, '9');
  const std::string half = nines.substr(0, 120);
  struct Row {
    std::int32_t code;
    std::vector<std::string> formats;
  };
  const Row rows[] = {
      {-35, {"", "   ", "5S", "'AB'5S", "%5S'AB", "'", "'A''", "'A''B''C''D'X"}},
      {-11, {"'A''B''C''D'", "'A''B''C'" + quoted(126)}},
      {-52, {quoted(129), "%X" + quoted(129), quoted(128) + "%D", "%20S" + quoted(109)}},
      {-52, {"%129S", "%129YMD", "%129TS", "%129T", "%100.30D"}},
      {-52, {"%5.D", "%.D", "%5.2.1D", "%5..1D"}},
      {-52, {"%" + nines + "S", "%" + nines + "YMD", "%" + half + "." + half + "U"}},
      {-7, {"%", "%%", "%5X", "%5'A'%S", "%YM", "%d"}},
  };
  for (const Row& row : rows) {
    for (const std::string& format : row.formats) {
      FormatParts parts = {7, 7};
      EXPECT_EQ(precheck_format(format, parts), row.code) << format;
      EXPECT_EQ(parts.variable + parts.fixed, 14) << format;
    }
  }
}

}  // namespace
}  // namespace korvex
