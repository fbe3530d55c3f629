#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "host/databases/shop.h"

// A shop in a real database: from its tables to rows in them, and everything that can stop them.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Shop = test::Shop;

TEST_P(Shop, IsFilledFromItsTables) {
  SKIP_WITHOUT_DATABASE();
  EXPECT_EQ(import("orders"), 1);
  EXPECT_EQ(program_.err(),
            "orders: error: column customer_id: refers to customers, which has no rows yet (load "
            "customers first), but must not be NULL\n");
  EXPECT_FALSE(fs::exists("orders.toml"));
  load_customers();
  EXPECT_EQ(query("SELECT count(*), count(DISTINCT email), min(since), max(since) FROM customers"),
            "1000|1000|2024-01-01|2024-12-31");
  EXPECT_EQ(query("SELECT count(*) FROM customers WHERE active"), "500");

  ASSERT_EQ(import("orders", "100000"), 0) << program_.err();
  EXPECT_EQ(program_.err(), "");
  edit("orders.toml", "start     = \"0.01\"", "start     = \"5.00\"");
  edit("orders.toml", "increment = \"0.01\"", "increment = \"0.05\"");

  ASSERT_EQ(
      program_.run({"check", "orders.toml", "--unique", "id", "--unique", "customer_id,amount"}), 0)
      << program_.err();
  const std::string checked = program_.out();
  ASSERT_EQ(program_.run({"generate", "--quiet", "orders.toml"}), 0) << program_.err();
  for (const std::string& line :
       {std::string("customer_id        1000  starts again after 1000 records\n"),
        std::string("amount            19900  starts again after 19900 records\n"),
        std::string("Records to generate: 100000\n"),
        "Exact file size:     " + std::to_string(fs::file_size("orders.csv")) + " bytes\n",
        std::string("Unique id: yes, all 100000 records differ; "),
        std::string("Unique customer_id, amount: yes, all 100000 records differ; a record more "
                    "than 199000 would not\n")}) {
    EXPECT_NE(checked.find(line), std::string::npos) << line << "in\n" << checked;
  }
  ASSERT_EQ(program_.run({"preview", "orders.toml", "-n", "3"}), 0) << program_.err();
  EXPECT_EQ(program_.out(),
            "         id  customer_id   amount  placed_at            note\n"
            "+0000000001            1  +005.00  2024/01/01 00:00:00  AAAAA\n"
            "+0000000002            2  +005.05  2024/01/01 00:00:01  AAAAB\n"
            "+0000000003            3  +005.10  2024/01/01 00:00:02  AAAAC\n");
  EXPECT_EQ(query("SELECT count(*) FROM orders"), "0");

  ASSERT_EQ(load("orders"), 0) << program_.err();
  EXPECT_TRUE(program_.out().starts_with("100000 records, ")) << program_.out();
  // 5.00 to 999.95 by 0.05 are 19,900 amounts: five rounds of 9,999,252.50, and the first 500 of
  // the sixth, 8,737.50.
  EXPECT_EQ(
      query("SELECT count(*), round(sum(amount), 2), min(amount), max(placed_at) FROM orders"),
      is_sqlite() ? "100000|50005000.0|5|2024-01-02 03:46:39"
                  : "100000|50005000.00|5.00|2024-01-02 03:46:39");
  EXPECT_EQ(query("SELECT count(*) FROM orders o JOIN customers c ON c.id = o.customer_id"
                  " WHERE o.customer_id = 1 + (o.id - 1) % 1000"),
            "100000");
  // As check and preview have said.
  EXPECT_EQ(query("SELECT count(DISTINCT customer_id), count(DISTINCT amount) FROM orders"),
            "1000|19900");
  EXPECT_EQ(query("SELECT count(*) FROM (SELECT DISTINCT customer_id, amount FROM orders) pairs"),
            "100000");
  EXPECT_EQ(query("SELECT id, customer_id, placed_at, note FROM orders WHERE id = 3"),
            "3|3|2024-01-01 00:00:02|AAAAC");
  EXPECT_TRUE(fs::is_empty("tmp"));

  // What is there already is not in the way of a second import.
  ASSERT_EQ(import("orders"), 0) << program_.err();
  ASSERT_EQ(load("orders", {"--quiet"}), 0) << program_.err();
  EXPECT_EQ(program_.out(), "");
  EXPECT_EQ(query("SELECT count(*), max(id) FROM orders"), "101000|101000");
  load_customers();
  EXPECT_EQ(query("SELECT count(*), max(id), max(email) FROM customers"), "2000|2000|AACYX");
}

TEST_P(Shop, TakesAnyNamesValuesAndKeys) {
  SKIP_WITHOUT_DATABASE();
  load_customers();
  test::write_file("words.txt", test::cp932("x, y\n\\N\ta\n\xE8\xA1\xA8\n"));
  ASSERT_EQ(import("marks"), 0) << program_.err();
  edit("marks.toml", "kind    = \"table\"", "kind    = \"record\"\nquote   = \"double\"");
  edit("marks.toml",
       "type      = \"range\"\nformat    = \"%5S\"\nstart     = \"AAAAA\"\nend       "
       "= \"ZZZZZ\"",
       "type = \"enumeration\"\nfile = \"words.txt\"");
  edit("marks.toml", "\"%5S\"", "\"\\\"1,'%5S\"");
  ASSERT_EQ(load("marks", {"--records", "4"}), 0) << program_.err();
  EXPECT_EQ(query("SELECT \"a \"\"b\\\", rest FROM marks ORDER BY id"),
            "x, y|\"1,AAAAA\n\\N\ta|\"1,AAAAB\n\xE8\xA1\xA8|\"1,AAAAC\nx, y|\"1,AAAAD");

  // Two keys that are only unique together are combined, as often as that goes.
  ASSERT_EQ(import("pairs", "5000"), 0) << program_.err();
  EXPECT_EQ(program_.err(),
            "pairs: columns customer_id, mark_id: unique, with only 4000 different values: the "
            "layout has 4000 records\n");
  ASSERT_EQ(load("pairs"), 0) << program_.err();
  EXPECT_EQ(query("SELECT count(*) FROM pairs"), "4000");

  // The lists of a key of two columns go side by side, without the pair that one of them lacks.
  query(
      "INSERT INTO parts VALUES ('acme', 'a,1'), ('acme', 'b'), ('bolt', '\xC3\xB6'), ('x', 'y')");
  ASSERT_EQ(import("lines"), 0);
  EXPECT_EQ(program_.err(),
            "lines: columns maker, code: keys of parts left out, as a list of code page 932 cannot "
            "hold them: 1\n"
            "lines: columns maker, code: together the key of parts, their lists belong together "
            "line by line\n");
  ASSERT_EQ(load("lines"), 0) << program_.err();
  EXPECT_EQ(query("SELECT maker, code, count(*) FROM lines GROUP BY maker, code ORDER BY 1, 2"),
            "acme|a,1|334\nacme|b|333\nx|y|333");

  ASSERT_EQ(import("tree"), 0);
  EXPECT_EQ(program_.err(), std::string("tree: column twice: computed by the database, left out\n"
                                        "tree: column shape: no item suits the type ") +
                                (is_sqlite() ? "geometry" : "path") + ", stays NULL\n");
  ASSERT_EQ(load("tree"), 0) << program_.err();
  EXPECT_EQ(query("SELECT count(*), sum(twice), count(shape) FROM tree WHERE parent_id = id"),
            "1000|1001000|0");
}

struct Refusal {
  std::string table;
  std::string from;  // of the layout
  std::string to;
  std::string sqlite;
  std::string postgresql;
};

// Each of them is one row among good ones, and none of the good ones stays.
TEST_P(Shop, RefusesARowAndKeepsNothing) {
  SKIP_WITHOUT_DATABASE();
  load_customers();
  query("DELETE FROM customers WHERE id = 777");
  query("INSERT INTO marks VALUES (5, 'x', NULL)");
  std::string list;
  for (int i = 1; i < 2000; ++i) list += std::to_string(i) + "\n";
  test::write_file("numbers.txt", list);
  const Refusal refusals[] = {
      {"customers", "start     = \"1001\"\nend       = \"2147483647\"",
       "start = \"-600\"\nend = \"1100\"",
       "record 602, item id, value \"+0000000001\": UNIQUE constraint failed: customers.id",
       "record 602, item id, value \"+0000000001\": duplicate key value violates unique constraint "
       "\"customers_pkey\": Key (id)=(1) already exists."},
      {"orders", "end       = \"999.99\"\nincrement = \"0.01\"",
       "end = \"-999.99\"\nincrement = \"-0.01\"",
       "record 2, item amount, value \"+000.00\": CHECK constraint failed: amount > 0",
       "record 2, item amount, value \"+000.00\": new row for relation \"orders\" violates check "
       "constraint \"orders_amount_check\""},
      {"orders", "orders.customer_id.txt", "numbers.txt",
       "record 777, item customer_id, value \"777\": FOREIGN KEY constraint failed",
       "record 777, item customer_id, value \"777\": insert or update on table \"orders\" violates "
       "foreign key constraint \"orders_customer_id_fkey\": Key (customer_id)=(777) is not present "
       "in table \"customers\"."},
      {"pairs", "pairs.mark_id.txt", "numbers.txt",
       "record 1, item mark_id, value \"1\": FOREIGN KEY constraint failed",
       "record 1, item mark_id, value \"1\": insert or update on table \"pairs\" violates foreign "
       "key constraint \"pairs_mark_id_fkey\": Key (mark_id)=(1) is not present in table "
       "\"marks\"."},
      {"customers", "type = \"enumeration\"\nfile = \"customers.active.txt\"", "type = \"initial\"",
       "record 1, item active, value NULL: NOT NULL constraint failed: customers.active",
       "record 1, item active, value NULL: null value in column \"active\" of relation "
       "\"customers\" violates not-null constraint"},
  };
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(refusal.table + " " + refusal.to);
    const std::string layout = refusal.table + ".toml";
    ASSERT_EQ(import(refusal.table), 0) << program_.err();
    if (refusal.to.find("initial") != std::string::npos) {
      test::write_file(layout, test::replaced(test::read_file(layout), "nullable  = false\n", ""));
    }
    edit(layout, refusal.from, refusal.to);
    const std::string count = "SELECT count(*) FROM " + refusal.table;
    const std::string before = query(count);
    EXPECT_EQ(load(refusal.table), 1);
    const std::string expected =
        refusal.table + ": " + (is_sqlite() ? refusal.sqlite : refusal.postgresql);
    EXPECT_TRUE(program_.err().starts_with(expected)) << program_.err() << "expected " << expected;
    EXPECT_TRUE(program_.err().ends_with("\nnothing was loaded\n")) << program_.err();
    EXPECT_EQ(query(count), before);
  }
  EXPECT_TRUE(fs::is_empty("tmp"));
}

TEST_P(Shop, EndsAtAnInterruptAndKeepsNothing) {
  SKIP_WITHOUT_DATABASE();
  // Much more than the 100 ms that a user may notice: the machine of a test has other work too.
  constexpr auto longest_end = std::chrono::seconds(2);
  constexpr auto a_while = std::chrono::milliseconds(300);
  ASSERT_EQ(import("marks"), 0) << program_.err();
  const std::string target = database_->target();
  // While it loads, and while it waits for somebody else's lock.
  for (const bool is_locked : {false, true}) {
    FILE* other = ::popen((database_->session() + " > /dev/null").c_str(), "w");
    if (is_locked) {
      std::fputs(is_sqlite() ? "BEGIN IMMEDIATE;\n" : "BEGIN; LOCK TABLE marks;\n", other);
      std::fflush(other);
      std::this_thread::sleep_for(a_while);
    }
    const int signal = is_locked ? SIGTERM : SIGINT;
    const pid_t child =
        program_.start({"load", "marks.toml", target, "marks", "--records", "2000000000"});
    for (int i = 0; i < 10000 && fs::is_empty("tmp"); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    std::this_thread::sleep_for(a_while);
    const Clock::time_point begin = Clock::now();
    ::kill(child, signal);
    EXPECT_EQ(test::Program::wait_for(child), 128 + signal) << program_.err();
    EXPECT_LT(Clock::now() - begin, longest_end);
    ::pclose(other);
    EXPECT_EQ(program_.err(), "nothing was loaded\n");
    EXPECT_EQ(query("SELECT count(*) FROM marks"), "0");
    EXPECT_TRUE(fs::is_empty("tmp"));
  }
}

TEST_P(Shop, SaysWhatIsWrongWithTheCommand) {
  SKIP_WITHOUT_DATABASE();
  const std::string target = database_->target();
  ASSERT_EQ(import("marks"), 0) << program_.err();
  const std::string layout = test::read_file("marks.toml");
  EXPECT_EQ(program_.run({"import", target, "marks", "-o", "marks.toml"}), 1);
  EXPECT_EQ(program_.err(), "marks.toml exists; --force replaces it\n");
  EXPECT_EQ(test::read_file("marks.toml"), layout);
  EXPECT_EQ(program_.run({"import", target, "nothing"}), 1);
  EXPECT_TRUE(
      program_.err().ends_with("no such table: nothing (the database has customers, lines, "
                               "marks, orders, pairs, parts, tree)\n"))
      << program_.err();
  EXPECT_EQ(program_.run({"load", "marks.toml", "nothing", "marks"}), 2);
  EXPECT_EQ(program_.run({"load", "marks.toml", target, "customers"}), 2);
  EXPECT_EQ(program_.err(),
            "marks.toml:23: item a \"b\\: the table customers has no column of this name\n"
            "marks.toml:36: item rest: the table customers has no column of this name\n");

  // A value list that the module refuses.
  test::write_file("numbers.txt", "1\n2,3\n");
  edit("marks.toml",
       "type      = \"range\"\nformat    = \"%10D\"\nstart     = \"1\"\nend       "
       "= \"2147483647\"",
       "type = \"enumeration\"\nfile = \"numbers.txt\"");
  EXPECT_EQ(program_.run({"load", "marks.toml", target, "marks"}), 1);
  EXPECT_TRUE(program_.err().starts_with(folder_.file("numbers.txt") + "\n2 line of a enum file"))
      << program_.err();
  EXPECT_EQ(query("SELECT count(*) FROM marks"), "0");

  test::write_file("numbers.txt", "1\n");
  edit("marks.toml", "name      = \"rest\"", "name      = \"ID\"");
  EXPECT_EQ(program_.run({"load", "marks.toml", target, "marks"}), 2);
  EXPECT_EQ(program_.err(), "marks.toml:34: item ID: another item goes to this column\n");
}

INSTANTIATE_TEST_SUITE_P(Databases, Shop, testing::Values("SQLite", "PostgreSQL"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace korvex::host
