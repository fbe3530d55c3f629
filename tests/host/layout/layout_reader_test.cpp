#include "host/layout/layout_reader.h"

#include <sstream>

#include "format/records.h"
#include "support/bytes.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

using test::cp932;

// Lines 1 to 4 and 5 to 8: tests add keys below, from line 9.
const std::string minimal = R"([layout]
kind = "record"
records = 10
data = "d.csv"
[[item]]
name = "A"
attribute = 4
digits = 5
)";

LayoutReading parse(const std::string& text, std::optional<std::int32_t> records = {}) {
  return parse_layout(text, "folder/l.toml", records);
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  return text.replace(text.find(what), what.size(), by);
}

// The item without its number and name, and what its values come to.
std::string describe(const LayoutItem& item) {
  std::ostringstream out;
  const ItemAttributes& a = item.attributes;
  out << a.attribute << ' ' << a.signed_flag << ' ' << a.length << ' ' << a.digits << ' '
      << a.decimals << (item.nullable ? " nullable" : "");
  if (!item.values) return out.str();
  const ItemValues& values = *item.values;
  const RangeTexts& texts = values.texts;
  out << ", source " << static_cast<int>(values.source) << " [" << texts.format << ", "
      << platform::to_utf8(texts.start) << ", " << platform::to_utf8(texts.end) << ", "
      << texts.increment << "] " << values.choices.exceeded_action << values.choices.custom_format
      << " " << platform::to_utf8(values.item_name) << values.file;
  if (values.repeat) out << " repeat " << values.repeat->level << " x " << values.repeat->count;
  return out.str();
}

TEST(LayoutReader, ReadsEveryKey) {
  const LayoutReading reading = parse(R"([layout]
kind = "table"
records = 1000
level = 3
null_default = true
data = "out/d.csv"
settings = "/s/x.fif"
work = "w"
quote = "double"
[[item]]
number = 7
name = "名前"
description = "説明"
attribute = "decimal"
signed = true
length = 12
digits = 9
decimals = 2
nullable = false
[item.values]
type = "range"
format = "%5.2D"
start = -5
end = "あ"
increment = "-0.5"
exceeded = "initialize"
custom = false
[[item]]
name = "B"
attribute = 28
values = { type = "initial" }
)");
  ASSERT_TRUE(reading.errors.empty()) << reading.errors[0].text;
  const Layout& layout = reading.layout;
  EXPECT_EQ((std::vector{layout.kind, layout.records, layout.level, layout.quotation}),
            (std::vector{2, 1000, 3, 1}));
  EXPECT_TRUE(layout.null_default);
  EXPECT_EQ(layout.data + " " + layout.settings + " " + layout.work,
            "folder/out/d.csv /s/x.fif folder/w");
  ASSERT_EQ(layout.items.size(), 2u);
  EXPECT_EQ(layout.items[0].number, 7);
  EXPECT_EQ(layout.items[0].name + layout.items[0].description, cp932("名前説明"));
  EXPECT_EQ(layout.items[0].values->place.line, 20u);
  EXPECT_EQ(describe(layout.items[0]), "4 1 12 9 2, source 1 [%5.2D, -5, あ, -0.5] 00 ");
  EXPECT_EQ(layout.items[1].number, 2);
  EXPECT_EQ(describe(layout.items[1]), "28 0 8 8 0 nullable, source 0 [, , , ] 00 ");
}

TEST(LayoutReader, FillsDefaultsAndReadsEveryTypeOfValues) {
  const LayoutReading reading = parse(minimal + R"([item.values]
type = "range"
format = "%5U"
[[item]]
name = "B"
attribute = 4
digits = 5
values = { type = "enumeration", file = "lists/町.txt", repeat = { level = 2, count = 30 } }
[[item]]
name = "C"
attribute = 28
values = { type = "default", repeat = { level = 1, count = 0 } }
[[item]]
name = "D"
attribute = 28
values = { type = "reference", item = "名前" }
[[item]]
name = "E"
attribute = 4
digits = 5
values = { type = "enumeration", file = "/lists/d.txt", exceeded = "initialize" }
)");
  ASSERT_TRUE(reading.errors.empty()) << reading.errors[0].text;
  const Layout& layout = reading.layout;
  EXPECT_EQ((std::vector{layout.level, layout.quotation}), (std::vector{1, 0}));
  EXPECT_FALSE(layout.null_default);
  EXPECT_EQ(layout.settings + " " + layout.work, "folder/d.fif folder");
  const std::string list = std::filesystem::current_path().string() + "/folder/lists/町.txt";
  // A count of 0 is no error of the layout: the module's own check refuses it, by number.
  const std::string expected[] = {
      "4 0 5 5 0 nullable, source 1 [%5U, , , 1] 11 ",
      "4 0 5 5 0 nullable, source 4 [, , , ] 10 " + list + " repeat 2 x 30",
      "28 0 8 8 0 nullable, source 2 [, , , ] 00  repeat 1 x 0",
      "28 0 8 8 0 nullable, source 3 [, , , ] 00 名前",
      "4 0 5 5 0 nullable, source 4 [, , , ] 00 /lists/d.txt",
  };
  ASSERT_EQ(layout.items.size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(layout.items[i].number, static_cast<std::int32_t>(i) + 1);
    EXPECT_EQ(describe(layout.items[i]), expected[i]);
  }
}

// Digits that the module finds impossible are no error of the layout: it uses the item.
TEST(LayoutReader, MarksImpossibleDigits) {
  const std::tuple<const char*, const char*, bool, std::int32_t> cases[] = {
      {"record", "3", false, 3}, {"record", "6", false, 0}, {"record", "12", true, 0},
      {"table", "5", false, 5},  {"table", "6", true, 0},   {"iso", "12", false, 0}};
  for (const auto& [kind, decimals, is_marked, counted] : cases) {
    const LayoutReading reading =
        parse(replaced(minimal, "record", kind) + "length = 20\ndecimals = " + decimals + "\n");
    ASSERT_TRUE(reading.errors.empty()) << reading.errors[0].text;
    EXPECT_EQ(reading.layout.items[0].has_invalid_digits, is_marked) << kind << decimals;
    EXPECT_EQ(reading.layout.items[0].attributes.decimals, counted) << kind << decimals;
  }
}

TEST(LayoutReader, NumberOfRecordsFromOutsideWins) {
  EXPECT_EQ(parse(minimal, 5).layout.records, 5);
  const LayoutReading without = parse(replaced(minimal, "records = 10\n", ""), 7);
  EXPECT_TRUE(without.errors.empty());
  EXPECT_EQ(without.layout.records, 7);
}

void expect_error(const std::string& text, std::uint32_t line, std::uint32_t column,
                  const std::string& message) {
  const LayoutReading reading = parse(text);
  ASSERT_EQ(reading.errors.size(), 1u) << text;
  EXPECT_EQ(reading.errors[0].place.line, line) << text;
  EXPECT_EQ(reading.errors[0].place.column, column) << text;
  EXPECT_NE(reading.errors[0].text.find(message), std::string::npos) << reading.errors[0].text;
}

TEST(LayoutReader, AnErrorNamesItsPlace) {
  expect_error(minimal.substr(0, minimal.find("[[item]]")), 1, 1, "has no item");
  expect_error(minimal + "[rest]\n", 9, 2, "unknown key \"rest\"");

  struct Case {
    std::string what, by;
    std::uint32_t line, column;
    const char* message;
  };
  const std::string x64(64, 'x');
  const Case cases[] = {
      {"\"record\"", "record", 2, 8, "in the line kind = record, expected"},
      {"[layout]", "[layout", 1, 8, "expected ']'"},
      {"data", "records = 1\ndata", 4, 11, "expected each key once"},
      {"data", "this one\ndata", 4, 6, "in the line this one"},
      {"[[item]]", "[item]", 5, 1, "a table"},
      {"records", "record = 1\nrecords", 3, 1, "unknown key \"record\""},
      {"\"record\"", "\"tabel\"", 2, 8, "kind is \"tabel\", expected one of"},
      {"records = 10\n", "", 1, 1, "has no records"},
      {"10", "\"10\"", 3, 11, "records is \"10\", expected an integer"},
      {"10", "2147483648", 3, 11, "to 2147483647"},
      {"data", "quote = \"single\"\ndata", 4, 9, "\"none\", \"double\""},
      {"data = \"d.csv\"\n", "", 1, 1, "has no data"},
      {"d.csv", std::string(249, 'x'), 4, 8, "path of 256 bytes"},
      {"d.csv", "d.fif", 4, 8, "its settings file"},
      {"d.csv", "d.log", 4, 8, "its log file"},
      {"d.csv", "l.toml", 4, 8, "the path of the layout"},
      {"name = \"A\"\n", "", 5, 1, "has no name"},
      {"\"A\"", "\"" + x64 + "\"", 6, 8, "64 bytes in code page 932, expected at most 63"},
      {"\"A\"", "\"あ\\u20ACb\"", 6, 8, "\"€\" at place 2"},
      {"\"A\"", "\"a\\u0000b\"", 6, 8, "\"\\x00\" at place 2"},
      {"= 4", "= \"text\"", 7, 13, "\"plain-character\""},
      {"= 4", "= 33", 7, 13, "33, expected a code from 1 to 32"},
      {"digits = 5\n", "", 5, 1, "neither digits nor length"},
  };
  for (const Case& c : cases)
    expect_error(replaced(minimal, c.what, c.by), c.line, c.column, c.message);
}

TEST(LayoutReader, AnErrorOfAnItemNamesItsPlace) {
  const std::tuple<const char*, std::uint32_t, const char*> of_item[] = {
      {"description = \"ああああああああああああああ\"", 15, "28 bytes"},
      {"length = -1", 10, "from 0 to"},
      {"decimals = -1", 12, "from 0 to"},
      {"signed = 1", 10, "signed is 1, expected true or false"},
      {"values = 5", 10, "values is 5, expected a table"},
      {"lenght = 5", 1, "unknown key \"lenght\" in [[item]]"},
      {"values = {}", 10, "has no type"},
      {"values = { type = \"rnage\" }", 19, "expected one of \"initial\""},
  };
  for (const auto& [line, column, message] : of_item) {
    expect_error(minimal + line, 9, column, message);
  }

  struct Case {
    std::string type, more;
    std::uint32_t column;
    const char* message;
  };
  const Case of_values[] = {
      {"reference", "", 10, "[item.values] has no item, expected the name of another item"},
      {"reference", ", item = 5", 39, "item is 5, expected a string"},
      {"enumeration", "", 10, "has no file, expected the path of a text file"},
      {"enumeration", ", file = \"\"", 41, "file is empty, expected a path"},
      {"enumeration", ", file = {}", 41, "file is a table, expected a string"},
      {"enumeration", ", file = \"/" + std::string(267, 'x') + "\"", 41,
       "path of 268 bytes, expected at most 267"},
      {"enumeration", ", file = \"f\", format = \"%U\"", 55, "expected type \"range\""},
      {"enumeration", ", file = \"f\", item = \"B\"", 53, "expected type \"reference\""},
      {"default", ", file = \"f\"", 37,
       "file stands beside type \"default\", expected type \"enumeration\""},
      {"initial", ", start = 1", 38,
       "start stands beside type \"initial\", expected type \"range\""},
      {"initial", ", repeat = { level = 1, count = 2 }", 39,
       "repeat stands beside type \"initial\", expected another type"},
      {"default", ", repeat = 3", 39, "repeat is 3, expected a table"},
      {"default", ", repeat = { count = 3 }", 39, "repeat has no level"},
      {"default", ", repeat = { level = 3 }", 39, "repeat has no count"},
      {"default", ", repeat = { level = -1, count = 3 }", 49, "level is -1, expected an integer"},
      {"default", ", repeat = { level = 1, count = \"3\" }", 60, "count is \"3\", expected"},
      {"default", ", repeat = { level = 1, count = 3, times = 2 }", 63,
       "unknown key \"times\" in repeat"},
      {"range", "", 10, "has no format"},
      {"range", ", format = \"%U\", ende = 5", 43, "unknown key \"ende\" in [item.values]"},
      {"range", ", format = \"%U\", start = 1970-01-01", 51, "a date or time without quotes"},
      {"range", ", format = \"%U\", end = 1.5", 49, "a floating-point number"},
      {"range", ", format = \"%U\", increment = \"1€\"", 55, "at place 2"},
      {"range", ", format = \"%U\", exceeded = \"stop\"", 54, "\"initialize\", \"repeat\""},
      {"range", ", format = \"%U\", file = \"f\"", 50, "expected type \"enumeration\""},
  };
  for (const Case& c : of_values) {
    expect_error(minimal + "values = { type = \"" + c.type + "\"" + c.more + " }", 9, c.column,
                 c.message);
  }
}

TEST(LayoutReader, ReportsAllErrorsInTheOrderOfTheirPlaces) {
  const LayoutReading reading = parse(R"([layout]
data = "d"
kind = 1
[[item]]
name = "A"
attribute = "integer"
[[item]]
number = 1
name = "B"
attribute = "date"
colour = "red"
)");
  std::vector<std::uint32_t> lines;
  for (const LayoutError& error : reading.errors) lines.push_back(error.place.line);
  EXPECT_EQ(lines, (std::vector<std::uint32_t>{1, 3, 7, 11}));
  EXPECT_EQ(reading.errors.at(2).text,
            "number 1 belongs to the item on line 4, expected another one");
}

// Unreadable lines, wrong values and refused ranges, none of which hides another.
TEST(LayoutReader, ReportsAllErrorsInOneRun) {
  const LayoutReading reading = parse(R"([layout
kind = "file"
records = 1O
data = "d.csv"
[[item]]
name = "A"
attribute = "decimal"
digits = 3
[item.values]
type = "range"
format = "%10U"
start = 1
[[item]]
name = "B
attribute = decimal
digits = 3
nullable = 1
)");
  std::vector<std::string> places;
  for (const LayoutError& error : reading.errors) {
    places.push_back(std::to_string(error.place.line) + ":" + std::to_string(error.place.column));
  }
  EXPECT_EQ(places,
            (std::vector<std::string>{"1:8", "2:8", "3:12", "11:10", "14:10", "15:13", "17:12"}));
  EXPECT_TRUE(reading.errors[3].text.starts_with("item A: format is \"%10U\": 99052:"));
}

std::string item(const std::string& name, const std::string& more) {
  return "[[item]]\nname = \"" + name + "\"\nattribute = 4\n" + more + "\n";
}

TEST(LayoutReader, ReportsReferencesAndMissingListsWithTheRest) {
  const test::TempFolder folder;
  test::write_file(folder.file("there.txt"), "1\n");
  const std::string text =
      "[layout]\nkind = \"record\"\nrecords = 1\ndata = \"d.csv\"\n" +
      item("A", "digits = 3\nvalues = { type = \"enumeration\", file = \"there.txt\" }") +
      item("B", "digits = 3\nvalues = { type = \"enumeration\", file = \"none.txt\" }") +
      item("C", "digits = 3\nvalues = { type = \"reference\", item = \"X\" }") +
      item("D", "digits = 3\nvalues = { type = \"reference\", item = \"D\" }") +
      item("E", "digits = 2\nvalues = { type = \"reference\", item = \"A\" }");
  test::write_file(folder.file("l.toml"), text);
  const LayoutReading reading = read_layout(folder.file("l.toml"), {}, MissingLists::refused);
  const std::pair<std::uint32_t, std::string> expected[] = {
      {14, "item B: file leads to " + folder.file("none.txt") + ", which does not exist"},
      {19, "item C: item is \"X\": 99074:"},
      {24, "item D: item is \"D\": 99029:"},
      {29, "item E: item is \"A\": 99"},
  };
  ASSERT_EQ(reading.errors.size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(reading.errors[i].place.line, expected[i].first);
    EXPECT_GT(reading.errors[i].place.column, 20u);
    EXPECT_TRUE(reading.errors[i].text.starts_with(expected[i].second)) << reading.errors[i].text;
  }
  // The settings decide which lists are read, or the module says what is wrong with a reference.
  EXPECT_TRUE(read_layout(folder.file("l.toml"), {}).errors.empty());
  // The item that is meant may be the one whose name cannot be read, which hides neither error.
  const LayoutReading unnamed = parse(replaced(text, "name = \"A\"", "name = A"));
  ASSERT_EQ(unnamed.errors.size(), 2u);
  EXPECT_EQ(unnamed.errors[1].place.line, 24u);
}

// A value that does not end takes in the lines behind it, which say nothing about it.
TEST(LayoutReader, AValueThatDoesNotEndHidesNothingElse) {
  for (const std::string open : {"[ \"a.csv\"", "\"\"\"a.csv", "'''a.csv"}) {
    const LayoutReading reading =
        parse("[layout]\nkind = \"record\"\nrecords = 1\ncolour = 1\ndata = " + open + "\n" +
              item("A", "digits = 3\nvalues = 5"));
    ASSERT_EQ(reading.errors.size(), 3u) << open;
    const std::pair<std::uint32_t, std::uint32_t> places[] = {{4, 1}, {5, 8}, {10, 10}};
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(reading.errors[i].place.line, places[i].first) << reading.errors[i].text;
      EXPECT_EQ(reading.errors[i].place.column, places[i].second) << reading.errors[i].text;
    }
  }
}

// Values that do end are not to blame for what stands behind them, and a second header keeps its
// keys to itself.
TEST(LayoutReader, BlamesTheLineThatIsWrong) {
  const std::string list =
      "item = [\n{ name = \"A\", attribute = 4, digits = 3, values = { type = \"default\" } }\n";
  const std::string header = "[layout]\nkind = \"record\"\nrecords = 1\ndata = \"d.csv\"\n";
  const std::string text = "note = \"\"\"\na = [\nb\"\"\"\n";
  const std::pair<std::string, std::vector<std::uint32_t>> cases[] = {
      {list + "{ name = 5 }\n]\n" + header, {3}},
      {list + "]\n" + header + item("B", "digits = 3"), {8}},
      {list + "]\n[layout]\nkind = [\"record\" 1]\nrecords = 1\ndata = \"d.csv\"\n", {5}},
      {text + header + item("A", "digits = [1 2]"), {1, 11}},
      {header + "\"a=[b\" = 1\n" + item("A", "digits = [1 2]"), {5, 9}},
      {replaced(header, "records = 1", "records = [[1]") + item("A", "digits = 3"), {3}},
      {replaced(header, "records = 1", "records = [\"]\"") + item("A", "digits = 3"), {3}},
      {header + item("A", "digits = 3") + header, {9}},
      {header + item("A", "digits = [") + item("B", "digits = 3"), {8}},
      {header + item("A", "digits = 3\nx = [\n\"signed\" = true"), {9}},
  };
  for (const auto& [layout, lines] : cases) {
    std::vector<std::uint32_t> found;
    for (const LayoutError& error : parse(layout).errors) found.push_back(error.place.line);
    EXPECT_EQ(found, lines) << layout;
  }
}

TEST(LayoutReader, EachRepeatHasALevelOfItsOwn) {
  const std::string values =
      "digits = 3\nvalues = { type = \"default\", repeat = { level = 1, count = 2 } }";
  const LayoutReading reading =
      parse("[layout]\nkind = \"record\"\nrecords = 1\ndata = \"d.csv\"\n" + item("A", values) +
            item("B", values));
  ASSERT_EQ(reading.errors.size(), 1u);
  EXPECT_EQ(reading.errors[0].place.line, 14u);
  EXPECT_EQ(reading.errors[0].text, "level 1 is that of the item on line 5, expected another one");
}

// Taking one in would overflow the stack.
TEST(LayoutReader, RefusesKeysOfManyParts) {
  const auto key = [](const std::string& part, const std::string& dot = ".") {
    std::string text = part;
    for (int i = 1; i < 60'000; ++i) text += dot + part;
    return text;
  };
  std::string nested = "1";
  for (int i = 0; i < 250; ++i) nested = "{a.a.a.a.a.a.a.a=" + nested + "}";
  const std::tuple<std::string, std::uint32_t, std::uint32_t, const char*> cases[] = {
      {key("a") + " = 1", 9, 1, "a key of 60000 parts, expected at most 8, in the line a.a"},
      {"  " + key("'.'", " . ") + " = 1", 9, 3, "a key of 60000 parts"},
      {"[" + key(R"("\".")") + "]", 9, 2, "a key of 60000 parts"},
      {"[[" + key("a") + "]]", 9, 3, "a key of 60000 parts"},
      {"x = \"ä#\\\"\"  # '\ny = '''\n'''''\nz = {\"ä\" = [1.5], " + key("a") + "=1}", 12, 19,
       "a key of 60000 parts"},
      // Inside the string, which ends where its own line does once it is known to have no end.
      {"x = \"\"\"\n" + key("a") + " = 1", 10, 1, "a key of 60000 parts"},
      // None of these is one.
      {"x = \"" + key("a") + "\"  # " + key("a") + "\na.a.a.a.a.a.a.a = 1\nx", 11, 2,
       "in the line"},
      {"x = " + nested, 9, 1, "unknown key \"x\""},
  };
  for (const auto& [lines, row, column, text] : cases) {
    const LayoutReading reading = parse(minimal + lines + "\n");
    std::string found;
    for (const LayoutError& error : reading.errors) {
      if (error.place.line == row && error.place.column == column) found += error.text;
    }
    EXPECT_NE(found.find(text), std::string::npos) << lines.substr(0, 60) << ": " << found;
    const bool is_long = std::string_view(text).starts_with("a key of");
    EXPECT_EQ(found.starts_with("a key of"), is_long) << found;
  }
}

// What no repair gets over ends with what was found, and with no more than that.
TEST(LayoutReader, GivesUpOnBytesThatNoRepairHelps) {
  for (const std::string& text :
       {std::string("a = \"\"\"\nb\nc"), std::string(300, '='), std::string("[a]\n[a]\n[a]\n"),
        std::string("\xFF\xFE\n\xFF"), "x = [1,\n2,\n" + minimal}) {
    EXPECT_FALSE(parse(text).errors.empty());
  }
}

TEST(LayoutReader, KeepsToWhatAPersonReads) {
  std::string unknown_keys;
  for (int i = 0; i < 2000; ++i) unknown_keys += "key" + std::to_string(i) + " = 1\n";
  const LayoutReading many = parse(minimal + unknown_keys);
  EXPECT_EQ(many.errors.size(), 1001u);
  EXPECT_EQ(many.errors.back().text, "further errors are left out");

  const LayoutReading dense = parse("a = [" + std::string(300'000, '['));
  ASSERT_EQ(dense.errors.size(), 1u);
  EXPECT_EQ(dense.errors[0].text, "has too many keys and values for its size");
  EXPECT_EQ(dense.errors[0].place.line, 0u);
}

// Data in place of a layout is wrong in nearly every line, and one message says so.
TEST(LayoutReader, AFileThatIsNoLayoutIsReportedInShort) {
  const std::tuple<const char*, int, const char*> cases[] = {
      {"1,x\n", 40, "30 further errors"},
      {"1,x\n", 400, "91 or more further errors"},
      {"[a]\n", 40, "32 further errors"},
  };
  for (const auto& [line, count, ending] : cases) {
    std::string text;
    for (int i = 0; i < count; ++i) text += line;
    const LayoutReading reading = parse(text);
    ASSERT_EQ(reading.errors.size(), 11u) << line;
    EXPECT_TRUE(reading.errors.back().text.starts_with("is no layout")) << line;
    EXPECT_TRUE(reading.errors.back().text.ends_with(ending)) << reading.errors.back().text;
  }
}

TEST(LayoutReader, SaysThatAFileCannotBeRead) {
  const test::TempFolder folder;
  for (const std::string& path : {folder.file("missing.toml"), folder.path()}) {
    const LayoutReading reading = read_layout(path, {});
    ASSERT_EQ(reading.errors.size(), 1u);
    EXPECT_EQ(reading.errors[0].place.line, 0u);
    EXPECT_TRUE(reading.errors[0].text.starts_with("cannot be read: ")) << reading.errors[0].text;
  }
}

}  // namespace
}  // namespace korvex::host
