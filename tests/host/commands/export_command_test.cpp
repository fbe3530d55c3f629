#include "host/commands/export_command.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/exit_status.h"
#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

namespace korvex::host {
namespace {

class ExportCommand : public testing::Test {
 protected:
  ExportCommand() {
    test::write_file(list(), test::cp932("say \"a,b\"\nO'Neil\tｿ\\表\n"));
    test::write_file(layout(), R"([layout]
kind = "table"
records = 3
data = "stock.csv"
quote = "double"
[[item]]
name = "N\"1"
attribute = "decimal"
signed = true
digits = 4
decimals = 2
[item.values]
type = "range"
format = "%2.2D"
start = "-0.50"
end = "1.00"
increment = "0.50"
[[item]]
name = "名"
attribute = "character"
length = 20
[item.values]
type = "enumeration"
file = ")" + list() + R"("
exceeded = "initialize"
[[item]]
name = "D"
attribute = "date"
[item.values]
type = "range"
format = "%2YMD"
start = "240229"
end = "241231"
)");
  }

  int run(const FormatChoices& format, const std::string& output = "-") {
    out.str("");
    messages.str("");
    return run_export({layout(), output, {}, format, false}, out, messages);
  }

  std::string layout() const { return folder.file("l.toml"); }
  std::string list() const { return folder.file("list.txt"); }

  test::TempFolder folder;
  test::TempFolder config_folder;
  test::ScopedVariable config_{"XDG_CONFIG_HOME", config_folder.path()};
  std::ostringstream out;
  std::ostringstream messages;
};

TEST_F(ExportCommand, EveryDialectKeepsItsRules) {
  struct Row {
    Dialect dialect;
    bool has_header;
    bool in_code_page;
    const std::string& expected;
  };
  const std::string csv =
      "\"N\"\"1\",名,D\r\n"
      "-00.50,\"say \"\"a,b\"\"\",24/02/29\r\n"
      "-00.00,O'Neil\tｿ\\表,24/03/01\r\n"
      "+00.50,,24/03/02\r\n";
  const std::string tsv =
      "-00.50\tsay \"a,b\"\t24/02/29\n"
      "-00.00\tO'Neil\\tｿ\\\\表\t24/03/01\n"
      "+00.50\t\t24/03/02\n";
  const std::string json =
      R"({"N\"1":-0.50,"名":"say \"a,b\"","D":"2024-02-29"}
{"N\"1":0.00,"名":"O'Neil\u0009ｿ\\表","D":"2024-03-01"}
{"N\"1":0.50,"名":null,"D":"2024-03-02"}
)";
  const std::string sql =
      "INSERT INTO \"stock\" (\"N\"\"1\", \"名\", \"D\") VALUES\n"
      "(-0.50, 'say \"a,b\"', '2024-02-29'),\n"
      "(0.00, 'O''Neil\tｿ\\表', '2024-03-01'),\n"
      "(0.50, NULL, '2024-03-02');\n";
  const Row rows[] = {
      {Dialect::csv, true, false, csv},          {Dialect::csv, true, true, csv},
      {Dialect::tsv, false, false, tsv},         {Dialect::tsv, false, true, tsv},
      {Dialect::json_lines, false, false, json}, {Dialect::sql, false, false, sql},
  };
  for (const Row& row : rows) {
    FormatChoices format;
    format.dialect = row.dialect;
    format.header = row.has_header;
    format.in_code_page = row.in_code_page;
    EXPECT_EQ(run(format), exit_status::done) << messages.str();
    std::string expected = row.in_code_page ? test::cp932(row.expected) : row.expected;
    // The number passes through zero, whose sign is plus.
    for (std::size_t at; (at = expected.find("-00.00")) != std::string::npos;) expected[at] = '+';
    EXPECT_TRUE(test::same_bytes(expected, out.str())) << out.str();
  }
}

TEST_F(ExportCommand, ReplacesItsOutputWhenComplete) {
  const std::string output = folder.file("o.csv");
  test::write_file(output, "old");
  ASSERT_EQ(run({}, output), exit_status::done) << messages.str();
  EXPECT_EQ(out.str(), "3 records: " + output + "\n");
  EXPECT_TRUE(test::read_file(output).starts_with("-00.50,"));
  const std::vector<std::string> names = {"l.toml", "list.txt", "o.csv"};
  EXPECT_EQ(folder.names(), names);

  test::write_file(output, "old");
  test::write_file(list(), "good\n\xFC\xFC\n");
  EXPECT_EQ(run({}, output), exit_status::failed);
  EXPECT_EQ(
      messages.str(),
      "record 2, item 名: \xEF\xBF\xBD\xEF\xBF\xBD has bytes without meaning in code page 932, "
      "expected characters\n");
  EXPECT_EQ(test::read_file(output), "old");
  EXPECT_EQ(folder.names(), names);

  for (const std::string& source : {layout(), list()}) {
    const std::string before = test::read_file(source);
    EXPECT_EQ(run({}, source), exit_status::wrong_usage);
    EXPECT_EQ(test::read_file(source), before);
  }
  EXPECT_EQ(run({}, folder.file("missing/o.csv")), exit_status::failed);
  EXPECT_TRUE(messages.str().ends_with("No such file or directory\n")) << messages.str();
  EXPECT_EQ(run({}, "/dev/full"), exit_status::failed);
}

TEST_F(ExportCommand, StartsANewInsertAfterManyRecords) {
  FormatChoices sql;
  sql.dialect = Dialect::sql;
  sql.table = "a\"b";
  EXPECT_EQ(run_export({layout(), "-", 1001, sql, false}, out, messages), exit_status::done);
  std::string text = out.str();
  int inserts = 0;
  for (std::size_t at = 0; (at = text.find("INSERT INTO \"a\"\"b\"", at)) != std::string::npos;
       ++at) {
    ++inserts;
  }
  EXPECT_EQ(inserts, 3);
  EXPECT_EQ(std::count(text.begin(), text.end(), ';'), 3);
}

TEST_F(ExportCommand, ATableMayStandInASchema) {
  const std::pair<const char*, const char*> rows[] = {
      {"s2.au", R"("s2"."au")"},
      {"a.b.c", R"("a"."b"."c")"},
      {R"("s2.au")", R"("s2.au")"},
      {R"("s 2"."a""u")", R"("s 2"."a""u")"},
      {R"(s."a.u")", R"("s"."a.u")"},
      // No path of names: one name, as it stands.
      {"s..au", R"("s..au")"},
      {R"("s".)", R"("""s"".")"},
      {R"("open)", R"("""open")"},
      {R"("a"b)", R"("""a""b")"},
  };
  for (const auto& [written, expected] : rows) {
    FormatChoices sql;
    sql.dialect = Dialect::sql;
    sql.table = written;
    EXPECT_EQ(run(sql), exit_status::done);
    EXPECT_TRUE(out.str().starts_with(std::string("INSERT INTO ") + expected + " (")) << out.str();
  }
  // The data file's name is no path.
  std::string text = test::read_file(layout());
  text.replace(text.find("stock.csv"), 9, "my.stock.csv");
  test::write_file(layout(), text);
  FormatChoices sql;
  sql.dialect = Dialect::sql;
  EXPECT_EQ(run(sql), exit_status::done);
  EXPECT_TRUE(out.str().starts_with("INSERT INTO \"my.stock\" (")) << out.str();
}

// Keys would hide each other; fields in a line do not.
TEST_F(ExportCommand, TwoItemsOfOneNameCannotBeKeys) {
  std::string text = test::read_file(layout());
  text.replace(text.find("\"D\""), 3, "\"名\"");
  test::write_file(layout(), text);
  for (const auto& [dialect, status] : {std::pair{Dialect::csv, exit_status::done},
                                        {Dialect::tsv, exit_status::done},
                                        {Dialect::json_lines, exit_status::wrong_usage},
                                        {Dialect::sql, exit_status::wrong_usage}}) {
    FormatChoices format;
    format.dialect = dialect;
    EXPECT_EQ(run(format), status);
    EXPECT_EQ(messages.str(),
              status == exit_status::done
                  ? ""
                  : layout() +
                        ":26: item 名: the item on line 18 has the same name, expected "
                        "different names for jsonl and sql\n");
  }
}

TEST(PlainNumber, DropsWhatNumbersDoNotNeed) {
  struct Row {
    const char* text;
    const char* expected;  // null: no number
  };
  const Row rows[] = {
      {"007", "7"},       {"+00012.50", "12.50"},
      {"-.25", "-0.25"},  {"-0", "0"},
      {"-00.00", "0.00"}, {"5.", "5"},
      {"000", "0"},       {"999999999999999999", "999999999999999999"},
      {"", nullptr},      {"+", nullptr},
      {".", nullptr},     {"1-2", nullptr},
      {"1.2.3", nullptr}, {"1e5", nullptr},
  };
  for (const Row& row : rows) {
    const auto number = plain_number(row.text);
    EXPECT_EQ(number.has_value(), row.expected != nullptr) << row.text;
    if (number && row.expected != nullptr) {
      EXPECT_EQ(*number, row.expected);
    }
  }
}

}  // namespace
}  // namespace korvex::host
