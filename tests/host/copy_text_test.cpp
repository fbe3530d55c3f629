#include "host/copy_text.h"

#include <gtest/gtest.h>

namespace korvex::host {
namespace {

TEST(CopyText, EscapesWhatWouldMeanSomethingElse) {
  std::string text = "x\n";
  append_copy_row({"a\tb", "\\N", "", "c\r\nd", "\xE3\x81\x82"}, text);
  append_copy_row({""}, text);
  EXPECT_EQ(text, "x\na\\tb\t\\\\N\t\\N\tc\\r\\nd\t\xE3\x81\x82\n\\N\n");
}

struct ContextCase {
  const char* context;
  std::int64_t line;
  const char* column;
};

TEST(CopyText, FindsLineAndColumnInAnyLanguage) {
  const ContextCase cases[] = {
      {"COPY t1, line 3, column price: \"12x\"", 3, "price"},
      {"COPY t1, line 12: \"1\tprice: 5\"", 12, ""},
      {"COPY t1, Zeile 7, Spalte id: \xC2\xBB"
       "5\xC2\xAB",
       7, "id"},
      {"COPY t1, ligne 7, colonne id : \xC2\xAB 5 \xC2\xBB", 7, "id"},
      {"t1\xE3\x81\xAE"
       "COPY\xE3\x80\x81\xE8\xA1\x8C 8\xE3\x80\x81\xE5\x88\x97 id: \"x\"",
       8, "id"},
      {"PL/pgSQL function f() line 3 at RAISE\nCOPY t1, line 5: \"1\"", 5, ""},
      {"SQL statement \"SELECT 1\"", 0, ""},
      {"", 0, ""},
  };
  for (const ContextCase& test : cases) {
    const CopyPlace place = find_copy_place(test.context, "t1", {"id", "price"});
    EXPECT_EQ(place.line, test.line) << test.context;
    EXPECT_EQ(place.column, test.column) << test.context;
  }
}

struct KeyCase {
  const char* detail;
  std::vector<std::string_view> values;
  bool is_named;
};

TEST(CopyText, ComparesKeysAsTheServerWritesThem) {
  const char* const pair = "Key (a, b)=(7, x, y) is not present in table \"t\".";
  const KeyCase cases[] = {
      {"Key (a)=(7) is not present in table \"t\".", {"+0000000007"}, true},
      {"Key (a)=(7) is not present in table \"t\".", {"70"}, false},
      {"Key (a)=(-0.50) already exists.", {"-00000.5"}, true},
      {"Key (a)=(0.00) already exists.", {"+00.00"}, true},
      {"Key (a)=(.5.) already exists.", {"5"}, false},
      {"Key (a)=(x)) already exists.", {"x)"}, true},
      {pair, {"007", "x, y"}, true},
      {pair, {"8", "x, y"}, false},
      {pair, {"7", "x"}, false},
      {"no key", {"no key"}, false},
  };
  for (const KeyCase& test : cases) {
    EXPECT_EQ(names_key(test.detail, test.values), test.is_named)
        << test.detail << " " << test.values.front();
  }
}

}  // namespace
}  // namespace korvex::host
