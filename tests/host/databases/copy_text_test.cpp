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

TEST(CopyText, FindsLineAndColumnInAnyLanguage) {
  const std::tuple<const char*, std::int64_t, const char*> cases[] = {
      {"COPY t1, line 3, column price: \"12x\"", 3, "price"},
      {"COPY t1, line 12: \"1\tprice: 5\"", 12, ""},
      {"COPY t1, Zeile 7, Spalte id: »5«", 7, "id"},
      {"COPY t1, ligne 7, colonne id : « 5 »", 7, "id"},
      {"t1のCOPY、行 8、列 id: \"x\"", 8, "id"},
      {"PL/pgSQL function f() line 3 at RAISE\nCOPY t1, line 5: \"1\"", 5, ""},
      {"SQL statement \"SELECT 1\"", 0, ""},
      {"", 0, ""},
  };
  for (const auto& [context, line, column] : cases) {
    const CopyPlace place = find_copy_place(context, "t1", {"id", "price"});
    EXPECT_EQ(place.line, line) << context;
    EXPECT_EQ(place.column, column) << context;
  }
}

TEST(CopyText, FindsTheColumnsOfAKey) {
  const std::vector<std::string> columns = {"id", "price", "a b"};
  using Places = std::vector<std::size_t>;
  EXPECT_EQ(key_places("Key (price, id)=(1, 2) already exists.", columns), (Places{1, 0}));
  EXPECT_EQ(key_places("Schlüssel »(\"a b\")=(1)« existiert bereits.", columns), Places{2});
  EXPECT_EQ(key_places("Key (id, other)=(1, 2) already exists.", columns), Places{});
  EXPECT_EQ(key_places("Failing row contains (1, 2).", columns), Places{});
}

TEST(CopyText, ComparesKeysAsTheServerWritesThem) {
  using enum ColumnType;
  // What the server says of key a, or of keys a and b, the value of a with its type, and b's text;
  // whether that is the key.
  const std::tuple<const char*, const char*, ColumnType, const char*, bool> cases[] = {
      {"(a)=(7)", "+0000000007", decimal, "", true},
      {"(a)=(7)", "70", decimal, "", false},
      {"(a)=(-0.50)", "-00000.5", decimal, "", true},
      {"(a)=(0.00)", "+00.00", decimal, "", true},
      {"(a)=(.5.)", "5", decimal, "", false},
      {"(a)=(x))", "x)", decimal, "", true},
      {"(a)=(7)", "007", text, "", false},
      {"(a)=(7  )", "7", text, "", false},
      {"(a)=(t)", "true", boolean, "", true},
      {"(a)=(f)", "true", boolean, "", false},
      {"(a)=(f)", "0", boolean, "", true},
      {"(a)=(f)", "", boolean, "", false},
      {"(a)=(2024-01-01 00:00:00+00)", "2024-01-01 00:00:00", timestamp, "", true},
      {"(a)=(1e-05)", "+0.00001", floating8, "", true},
      {"(a)=(1.5)", "+1.51", floating8, "", false},
      {"(a)=(0.1)", "0.100000001", floating4, "", true},
      {"(a)=(\\xab)", "\\xAB", hex_binary, "", true},
      {"(a, b)=(7, x, y)", "007", decimal, "x, y", true},
      {"(a, b)=(7, x, y)", "8", decimal, "x, y", false},
      {"(a, b)=(7, x, y)", "7", decimal, "x", false},
  };
  const auto column = [](ColumnType type, bool is_padded = false) {
    ColumnSchema schema;
    schema.type = type;
    schema.is_padded = is_padded;
    return schema;
  };
  for (const auto& [key, value, type, other, is_named] : cases) {
    const ColumnSchema first = column(type);
    const ColumnSchema second = column(text);
    std::vector<KeyPart> parts = {{value, first}};
    if (*other != '\0') parts.push_back({other, second});
    const std::string detail = std::string("Key ") + key + " is not present in table \"t\".";
    EXPECT_EQ(names_key(detail, parts), is_named) << detail << " " << value;
  }
  const ColumnSchema padded = column(text, true);
  EXPECT_TRUE(names_key("Key (a)=(7  ) already exists.", {{"7", padded}}));
  EXPECT_FALSE(names_key("no key", {{"no key", padded}}));
}

}  // namespace
}  // namespace korvex::host
