#include "host/databases/copy_text.h"

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

TEST(CopyText, FindsTheColumnsOfAKey) {
  const std::vector<std::string> columns = {"id", "price", "a b"};
  using Places = std::vector<std::size_t>;
  EXPECT_EQ(key_places("Key (price, id)=(1, 2) already exists.", columns), (Places{1, 0}));
  EXPECT_EQ(
      key_places("Schl\xC3\xBCssel \xC2\xBB(\"a b\")=(1)\xC2\xAB existiert bereits.", columns),
      Places{2});
  EXPECT_EQ(key_places("Key (id, other)=(1, 2) already exists.", columns), Places{});
  EXPECT_EQ(key_places("Failing row contains (1, 2).", columns), Places{});
}

struct KeyCase {
  const char* detail;
  std::vector<std::string_view> values;
  bool is_named;
  ColumnType type = ColumnType::decimal;  // of the first value, texts follow
  bool is_padded = false;
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
      {"Key (a)=(7) already exists.", {"007"}, false, ColumnType::text},
      {"Key (a)=(7  ) already exists.", {"7"}, false, ColumnType::text},
      {"Key (a)=(7  ) already exists.", {"7"}, true, ColumnType::text, true},
      {"Key (a)=(t) already exists.", {"true"}, true, ColumnType::boolean},
      {"Key (a)=(f) already exists.", {"true"}, false, ColumnType::boolean},
      {"Key (a)=(f) already exists.", {"0"}, true, ColumnType::boolean},
      {"Key (a)=(f) already exists.", {""}, false, ColumnType::boolean},
      {"Key (a)=(2024-01-01 00:00:00+00) already exists.",
       {"2024-01-01 00:00:00"},
       true,
       ColumnType::timestamp},
      {"Key (a)=(1e-05) already exists.", {"+0.00001"}, true, ColumnType::floating8},
      {"Key (a)=(1.5) already exists.", {"+1.51"}, false, ColumnType::floating8},
      {"Key (a)=(0.1) already exists.", {"0.100000001"}, true, ColumnType::floating4},
      {"Key (a)=(\\xab) already exists.", {"\\xAB"}, true, ColumnType::hex_binary},
      {pair, {"007", "x, y"}, true},
      {pair, {"8", "x, y"}, false},
      {pair, {"7", "x"}, false},
      {"no key", {"no key"}, false},
  };
  for (const KeyCase& test : cases) {
    ColumnSchema first;
    first.type = test.type;
    first.is_padded = test.is_padded;
    ColumnSchema other;
    other.type = ColumnType::text;
    std::vector<KeyPart> key;
    for (const std::string_view value : test.values) {
      key.push_back({value, key.empty() ? first : other});
    }
    EXPECT_EQ(names_key(test.detail, key), test.is_named)
        << test.detail << " " << test.values.front();
  }
}

}  // namespace
}  // namespace korvex::host
