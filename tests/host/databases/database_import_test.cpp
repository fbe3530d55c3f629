#include <gtest/gtest.h>

#include <filesystem>

#include "host/databases/shop.h"

// What import makes of tables that have rows, odd names and keys, and where it writes.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;
using ShopImport = test::Shop;

// What a second import of one column begins with, from what the table holds.
TEST_P(ShopImport, UniqueTextsGoOnBehindThoseThatAreThere) {
  SKIP_WITHOUT_DATABASE();
  struct Row {
    std::string type;
    std::vector<std::string> held;
    std::string records;
    std::string first;  // of the rows that are loaded, and the last
    std::string last;
  };
  const Row rows[] = {
      {"varchar(40)", {}, "3", "AAAAA", "AAAAC"},
      // Other texts do not count, whatever the database thinks of their order.
      {"varchar(40)",
       {"ABCZY", "zzzzz", "ZZZZ", "ZZZZZ1", "ZZ ZZ", "\xC3\x84ZZZZ", "x\nZZZZZ"},
       "3",
       "ABCZZ",
       "ABDAB"},
      {"char(3)", {"AZZ", "BA"}, "2", "BAA", "BAB"},
      // No letters are left: numbers take over, and go on in their turn.
      {"text", {"ZZZZY"}, "2", "0000000001", "0000000002"},
      {"text", {"ZZZZZ", "0000000099", "99999999999"}, "2", "0000000100", "0000000101"},
      {"numeric(5)", {"7", "41"}, "2", "42", "43"},
      {"uuid",
       {"00000000-0000-4000-8000-000000000109", "f0000000-0000-4000-8000-000000000200"},
       "2",
       "00000000-0000-4000-8000-000000000110",
       "00000000-0000-4000-8000-000000000111"},
      {is_sqlite() ? "json" : "jsonb",
       {"\"AAAAZ\"", "\"ZZZZZZ\"", "7"},
       "2",
       "\"AAABA\"",
       "\"AAABB\""},
  };
  int number = 0;
  for (const Row& row : rows) {
    const std::string table = "unique_" + std::to_string(++number);
    SCOPED_TRACE(row.type + " " + table);
    query("CREATE TABLE " + table + " (id integer PRIMARY KEY, v " + row.type + " UNIQUE)");
    for (std::size_t i = 0; i < row.held.size(); ++i) {
      query("INSERT INTO " + table + " VALUES (" + std::to_string(i + 1) + ", '" + row.held[i] +
            "')");
    }
    ASSERT_EQ(import(table, row.records), 0) << program_.err();
    ASSERT_EQ(load(table), 0) << program_.err();
    const std::string from = " FROM " + table + " WHERE id = ";
    EXPECT_EQ(query("SELECT v" + from + std::to_string(row.held.size() + 1)), row.first);
    EXPECT_EQ(query("SELECT v" + from + "(SELECT max(id) FROM " + table + ")"), row.last);
  }
  // Nothing is left, but for one value, which is no range.
  query("CREATE TABLE used_up (v varchar(1) UNIQUE); INSERT INTO used_up VALUES ('Y')");
  ASSERT_EQ(import("used_up"), 0);
  EXPECT_EQ(program_.err(),
            "used_up: column v: no range of values remains behind the largest that it holds, stays "
            "NULL\n");
}

TEST_P(ShopImport, ImportWritesOnlyItsOwnFiles) {
  SKIP_WITHOUT_DATABASE();
  const std::string target = database_->target();
  load_customers();
  // Folders are made, and a list stands beside the layout.
  ASSERT_EQ(program_.run({"import", target, "orders", "-o", "new/folder/f.toml"}), 0)
      << program_.err();
  EXPECT_TRUE(fs::exists("new/folder/orders.customer_id.txt"));
  EXPECT_EQ(program_.run({"generate", "new/folder/f.toml", "--quiet"}), 0) << program_.err();
  const std::string layout = test::read_file("new/folder/f.toml");
  ASSERT_EQ(program_.run({"import", target, "orders", "-o", "-"}), 0) << program_.err();
  EXPECT_EQ(program_.out(), layout);
  EXPECT_FALSE(fs::exists("-"));

  // A layout that cannot be written leaves no list.
  fs::remove("orders.customer_id.txt");
  fs::create_directory("taken");
  EXPECT_EQ(program_.run({"import", target, "orders", "-o", "taken", "--force"}), 1);
  EXPECT_FALSE(fs::exists("orders.customer_id.txt"));

  // Nor do two of its files take one place, by their names or by a link.
  query("CREATE TABLE twins (\"x/y\" boolean NOT NULL, x_y boolean NOT NULL)");
  ASSERT_EQ(import("twins"), 0) << program_.err();
  EXPECT_TRUE(fs::exists("twins.x_y.txt") && fs::exists("twins.x_y.2.txt"));
  test::write_file("linked.toml", "old");
  fs::remove("customers.active.txt");
  fs::create_symlink("linked.toml", "customers.active.txt");
  for (const char* output : {"customers.active.txt", "linked.toml"}) {
    EXPECT_EQ(program_.run({"import", target, "customers", "-o", output, "--force"}), 2) << output;
    EXPECT_EQ(test::read_file("linked.toml"), "old");
  }

  if (!is_sqlite()) return;
  const std::string file = target.substr(std::string("sqlite:").size());
  fs::create_symlink(file, "link.db");
  fs::create_hard_link(file, "other.db");
  fs::create_symlink(file, "orders.customer_id.txt");
  for (const char* output : {"link.db", "other.db", "orders.toml"}) {
    EXPECT_EQ(program_.run({"import", target, "orders", "-o", output, "--force"}), 2);
    EXPECT_NE(program_.err().find(": is the database that is read, expected a file of its own\n"),
              std::string::npos)
        << program_.err();
  }
  EXPECT_FALSE(fs::exists("orders.toml"));
  EXPECT_EQ(query("SELECT count(*) FROM customers"), "1000");
  EXPECT_EQ(program_.run({"import", "sqlite:", "customers"}), 2);
  EXPECT_NE(program_.err().find("names no file"), std::string::npos) << program_.err();
}

TEST_P(ShopImport, SaysWhyAColumnBecomesNoItem) {
  SKIP_WITHOUT_DATABASE();
  const std::string long_name(64, 'n');
  query("CREATE TABLE names (\"pri\xC3\xA9\" integer, " + (is_sqlite() ? long_name : "b") +
        " integer, a integer NOT NULL)");
  ASSERT_EQ(import("names"), 0);
  EXPECT_TRUE(
      program_.err().starts_with("names: column pri\xC3\xA9: its name has a character that "
                                 "code page 932 lacks, left out\n"))
      << program_.err();
  if (is_sqlite()) {
    EXPECT_TRUE(program_.err().ends_with(
        ": its name has 64 bytes in code page 932, expected at most 63, left out\n"))
        << program_.err();
  }
  query("CREATE TABLE bare (\"pri\xC3\xA9\" integer)");
  EXPECT_EQ(import("bare"), 1);
  EXPECT_TRUE(program_.err().ends_with("bare: error: no column can become an item\n"))
      << program_.err();
  EXPECT_FALSE(fs::exists("bare.toml"));
  for (int i = 10; i < 30; ++i) query("CREATE TABLE a" + std::to_string(i) + " (a integer)");
  EXPECT_EQ(import("nothing"), 1);
  EXPECT_TRUE(program_.err().ends_with(", a29, ...)\n")) << program_.err();
}

// The recipes of the page on databases.
TEST_P(ShopImport, TakesMomentsFromAListAndEmailAddressesFromAFormat) {
  SKIP_WITHOUT_DATABASE();
  load_customers();
  ASSERT_EQ(import("orders"), 0) << program_.err();
  std::string days;
  for (int day = 10; day < 30; ++day) days += "2024-02-" + std::to_string(day) + " 08:30:00\n";
  test::write_file("placed_at.txt", days);
  edit("orders.toml",
       "attribute = \"timestamp\"\ndigits    = 15\nlength    = 15\nnullable  = false\n"
       "[item.values]\ntype      = \"range\"\nformat    = \"%TS\"\nstart     = "
       "\"20240101 000000\"\nend       = \"20241231 235959\"\n",
       "attribute = \"character\"\nlength    = 19\n"
       "[item.values]\ntype = \"enumeration\"\nfile = \"placed_at.txt\"\n");
  ASSERT_EQ(load("orders"), 0) << program_.err();
  EXPECT_EQ(query("SELECT count(*), count(DISTINCT placed_at), min(placed_at), max(placed_at)"
                  " FROM orders"),
            "1000|20|2024-02-10 08:30:00|2024-02-29 08:30:00");

  query("DELETE FROM orders; DELETE FROM customers");
  ASSERT_EQ(import("customers"), 0) << program_.err();
  edit("customers.toml", "\"%5S\"\nstart     = \"AAAAA\"\nend       = \"ZZZZZ\"",
       "\"'user'%6U'@example.org'\"\nstart     = 1\nend       = 999999");
  ASSERT_EQ(load("customers"), 0) << program_.err();
  EXPECT_EQ(query("SELECT min(email), max(email) FROM customers"),
            "user000001@example.org|user001000@example.org");
}

// Two keys walk through their lists in step, unless repeats nest them.
TEST_P(ShopImport, RepeatsGiveEveryPairOfTwoKeys) {
  SKIP_WITHOUT_DATABASE();
  query(
      "CREATE TABLE visits (id integer PRIMARY KEY,"
      " customer_id integer NOT NULL REFERENCES customers (id),"
      " mark_id integer NOT NULL REFERENCES marks (id))");
  for (const char* table : {"customers", "marks"}) {
    ASSERT_EQ(import(table, "100"), 0) << program_.err();
    ASSERT_EQ(load(table), 0) << program_.err();
  }
  const std::string pairs =
      "SELECT count(*) FROM (SELECT DISTINCT customer_id, mark_id FROM visits) p";
  ASSERT_EQ(import("visits", "10000"), 0) << program_.err();
  ASSERT_EQ(load("visits"), 0) << program_.err();
  EXPECT_EQ(query(pairs), "100");
  query("DELETE FROM visits");
  for (const auto& [column, level] : {std::pair{"customer_id", "1"}, {"mark_id", "2"}}) {
    const std::string file = std::string("file = \"visits.") + column + ".txt\"\n";
    edit("visits.toml", file, file + "repeat = { level = " + level + ", count = 1 }\n");
  }
  ASSERT_EQ(load("visits"), 0) << program_.err();
  EXPECT_EQ(query(pairs), "10000");
}

INSTANTIATE_TEST_SUITE_P(Databases, ShopImport, testing::Values("SQLite", "PostgreSQL"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace korvex::host
