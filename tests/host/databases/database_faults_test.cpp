#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "support/databases.h"
#include "support/environment.h"
#include "support/program.h"

// Tables that are in the way of a load or an import: what is said of them, and that nothing is
// kept.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;

struct ListedItem {
  std::string name;
  std::vector<std::string> values;
};

// A layout whose items take their values from lists, in turn.
void write_layout(const std::vector<ListedItem>& items, std::int64_t records) {
  std::string layout =
      "[layout]\nkind = \"table\"\ndata = \"t.csv\"\nrecords = " + std::to_string(records) + "\n";
  for (const ListedItem& item : items) {
    std::string lines;
    for (const std::string& value : item.values) lines += value + "\n";
    test::write_file(item.name + ".list", lines);
    layout += "[[item]]\nname = \"" + item.name +
              "\"\nattribute = \"character\"\nlength = 40\n"
              "values = { type = \"enumeration\", file = \"" +
              item.name + ".list\" }\n";
  }
  test::write_file("t.toml", layout);
}

class DatabaseFaults : public testing::TestWithParam<const char*> {
 protected:
  DatabaseFaults()
      : config_("XDG_CONFIG_HOME", folder_.file("config")), temporary_("TMPDIR", std::nullopt) {
    fs::current_path(folder_.path());
    if (is_sqlite()) {
      database_ = std::make_unique<test::SqliteFile>();
    } else {
      database_ = test::PostgresqlServer::start();
    }
    // What a program leaves in its temporary folder is found there.
    fs::create_directory("tmp");
    ::setenv("TMPDIR", folder_.file("tmp").c_str(), 1);
  }
  ~DatabaseFaults() override { fs::current_path("/"); }

  static bool is_sqlite() { return std::string(GetParam()) == "SQLite"; }

  int load(const std::string& table) {
    return program_.run({"load", "t.toml", database_->target(), table});
  }
  int import(const std::string& table, const std::string& more = "") {
    return program_.run({"import", database_->target() + more, table, "-o", "i.toml", "--force",
                         "--records", "10"});
  }
  std::string query(const std::string& sql) const { return database_->query(sql); }

  test::TempFolder folder_;
  test::ScopedVariable config_;
  test::ScopedVariable temporary_;
  const test::Program program_{KORVEX_PROGRAM, folder_.path()};
  std::unique_ptr<test::TestDatabase> database_;
};

#define SKIP_WITHOUT_DATABASE() \
  if (!database_) GTEST_SKIP() << "the programs of a PostgreSQL server are not installed"

struct LoadCase {
  std::string table;
  std::string
      sqlite;  // what makes the table; empty where the other database alone has such a thing
  std::string postgresql;
  std::vector<ListedItem> items;  // as many records as the first has values
  std::string sqlite_says;        // behind the table's name
  std::string postgresql_says;
};

// A trigger of PostgreSQL in one go.
std::string trigger(const std::string& when, const std::string& table, const std::string& body) {
  return "CREATE FUNCTION do_" + table + "() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN " + body +
         " RETURN NEW; END $$; CREATE TRIGGER watch " + when + " INSERT ON " + table +
         " FOR EACH ROW EXECUTE FUNCTION do_" + table + "();";
}

std::string not_present(const std::string& table, const std::string& column,
                        const std::string& written) {
  return "insert or update on table \"" + table + "\" violates foreign key constraint \"" + table +
         "_" + column + "_fkey\": Key (" + column + ")=(" + written +
         ") is not present in table \"" + table + "_parent\".";
}

// A table that refers to one with a single key of the type.
LoadCase reference_of(const std::string& type, const std::string& table, const std::string& key,
                      const std::string& sent, const std::string& written) {
  const std::string sql = "CREATE TABLE " + table + "_parent (k " + type +
                          " PRIMARY KEY); INSERT INTO " + table + "_parent VALUES ('" + key +
                          "'); CREATE TABLE " + table + " (k " + type + " REFERENCES " + table +
                          "_parent)";
  return {table, "",
          sql,   {{"k", {key, sent}}},
          "",    "record 2, item k, value \"" + sent + "\": " + not_present(table, "k", written)};
}

TEST_P(DatabaseFaults, EndALoadAndNameTheRow) {
  SKIP_WITHOUT_DATABASE();
  const LoadCase cases[] = {
      {"dropping",
       "CREATE TABLE dropping (id INTEGER PRIMARY KEY, b TEXT);"
       "CREATE TRIGGER watch BEFORE INSERT ON dropping WHEN new.id = 3"
       " BEGIN SELECT RAISE(IGNORE); END",
       "CREATE TABLE dropping (id integer PRIMARY KEY, b text);" +
           trigger("BEFORE", "dropping", "IF NEW.id = 3 THEN RETURN NULL; END IF;"),
       {{"id", {"1", "2", "3", "4", "5"}}, {"b", {"x"}}},
       "record 3, item id, value \"3\", item b, value \"x\": the database dropped the row without "
       "an error",
       "records 1 to 5: the database kept 4 of 5 rows and gave no error"},
      {"ignoring",
       "CREATE TABLE ignoring (id INTEGER PRIMARY KEY ON CONFLICT IGNORE)",
       "",
       {{"id", {"1", "2", "2"}}},
       "record 3, item id, value \"2\": UNIQUE constraint failed: ignoring.id",
       ""},
      {"replacing",
       "CREATE TABLE replacing (id INTEGER PRIMARY KEY, k TEXT UNIQUE ON CONFLICT REPLACE);"
       "INSERT INTO replacing VALUES (9, 'old')",
       "",
       {{"id", {"1", "2"}}, {"k", {"new", "old"}}},
       "record 2, item k, value \"old\": UNIQUE constraint failed: replacing.k",
       ""},
      // Numbers that do not go up by one each, and rows without any of the database's own.
      {"later",
       "CREATE TABLE later_parent (k INTEGER PRIMARY KEY); INSERT INTO later_parent VALUES (1), "
       "(2);"
       "CREATE TABLE later (id INTEGER PRIMARY KEY, up INTEGER REFERENCES later, k INTEGER"
       " REFERENCES later_parent DEFERRABLE INITIALLY DEFERRED) WITHOUT ROWID",
       "CREATE TABLE later_parent (k integer PRIMARY KEY); INSERT INTO later_parent VALUES (1), "
       "(2);"
       "CREATE TABLE later (id integer PRIMARY KEY, up integer REFERENCES later, k integer"
       " REFERENCES later_parent DEFERRABLE INITIALLY DEFERRED)",
       {{"id", {"9", "7", "5", "3"}}, {"up", {"9", "9", "5", "3"}}, {"k", {"1", "2", "+77", "78"}}},
       "record 3, item k, value \"+77\": FOREIGN KEY constraint failed",
       "record 3, item k, value \"+77\": " + not_present("later", "k", "77")},
      {"own",
       "CREATE TABLE own_parent (k INTEGER PRIMARY KEY); INSERT INTO own_parent VALUES (1);"
       "CREATE TABLE own (id INTEGER PRIMARY KEY, k INTEGER REFERENCES own_parent,"
       " up INTEGER REFERENCES own, void INTEGER REFERENCES own_parent)",
       "",
       {{"id", {"1", "2"}}, {"up", {"+1", "+2"}}, {"k", {"1", "5"}}},
       "record 2, item k, value \"5\": FOREIGN KEY constraint failed",
       ""},
      reference_of("char(4)", "padded", "ab", "zz", "zz  "),
      reference_of("varchar(4)", "texts", "7", "07", "07"),
      reference_of("boolean", "truths", "true", "false", "f"),
      reference_of("timestamptz", "moments", "2024-01-01 00:00:00", "2024-01-01 00:00:01",
                   "2024-01-01 00:00:01+00"),
      reference_of("float8", "floats", "1", "0.00001", "1e-05"),
      // Written in a way that nobody compares: the item alone is sure.
      {"spans",
       "",
       "CREATE TABLE spans_parent (k interval PRIMARY KEY);"
       "CREATE TABLE spans (k interval REFERENCES spans_parent)",
       {{"k", {"1 hour"}}},
       "",
       "item k: " + not_present("spans", "k", "01:00:00")},
      {"twice",
       "",
       "CREATE TABLE twice (k integer UNIQUE DEFERRABLE INITIALLY DEFERRED)",
       {{"k", {"1", "2", "3", "4", "5", "6", "+1", "8"}}},
       "",
       "record 7, item k, value \"+1\": duplicate key value violates unique constraint "
       "\"twice_k_key\": Key (k)=(1) already exists."},
      {"split",
       "",
       "CREATE TABLE split_parent (k integer PRIMARY KEY); INSERT INTO split_parent VALUES (1);"
       "CREATE TABLE split (id integer, \"K 1\" integer REFERENCES split_parent)"
       " PARTITION BY RANGE (id);"
       "CREATE TABLE split_1 PARTITION OF split FOR VALUES FROM (1) TO (9)",
       {{"id", {"1", "2", "3"}}, {"K 1", {"1", "1", "07"}}},
       "",
       "record 3, item K 1, value \"07\": insert or update on table \"split_1\" violates foreign "
       "key"},
      {"raising",
       "CREATE TABLE raising (id INTEGER PRIMARY KEY);"
       "CREATE TRIGGER no AFTER INSERT ON raising WHEN new.id = 2"
       " BEGIN SELECT RAISE(ABORT, 'no such luck'); END",
       "CREATE TABLE raising (id integer PRIMARY KEY);" +
           trigger("AFTER", "raising", "IF NEW.id = 2 THEN RAISE 'no such luck'; END IF;"),
       {{"id", {"1", "2"}}},
       "record 2, item id, value \"2\": no such luck",
       "ERROR:  no such luck\nCONTEXT:"},
      {"orphans",
       "CREATE TABLE orphans (id INTEGER PRIMARY KEY, k INTEGER REFERENCES nowhere)",
       "",
       {{"id", {"1"}}},
       "column k: refers to nowhere, which is not there",
       ""},
  };
  for (const LoadCase& test : cases) {
    SCOPED_TRACE(test.table);
    const std::string& sql = is_sqlite() ? test.sqlite : test.postgresql;
    if (sql.empty()) continue;
    query(sql);
    const std::string count = "SELECT count(*) FROM " + test.table;
    const std::string before = query(count);
    write_layout(test.items, std::ssize(test.items.front().values));
    EXPECT_EQ(load(test.table), 1);
    std::string said = program_.err();
    if (said.starts_with(test.table + ": ")) said.erase(0, test.table.size() + 2);
    EXPECT_TRUE(said.starts_with(is_sqlite() ? test.sqlite_says : test.postgresql_says)) << said;
    EXPECT_TRUE(said.ends_with("\nnothing was loaded\n")) << said;
    EXPECT_EQ(query(count), before);
  }
}

// What triggers do with rows of their own is none of a load's business.
TEST_P(DatabaseFaults, LeaveTriggersTheirOwnWay) {
  SKIP_WITHOUT_DATABASE();
  if (is_sqlite()) {
    query(
        "CREATE TABLE days (day TEXT UNIQUE);"
        "CREATE TABLE t (id INTEGER PRIMARY KEY, k TEXT UNIQUE);"
        "CREATE TRIGGER log AFTER INSERT ON t BEGIN INSERT OR IGNORE INTO days VALUES ('x'); END;"
        "CREATE VIEW v AS SELECT * FROM t;"
        "CREATE TRIGGER put INSTEAD OF INSERT ON v BEGIN INSERT INTO t VALUES (new.id, new.k); "
        "END");
  } else {
    query("CREATE TABLE days (day text UNIQUE); CREATE TABLE t (id integer PRIMARY KEY, k text);" +
          trigger("AFTER", "t", "INSERT INTO days VALUES ('x') ON CONFLICT DO NOTHING;") +
          "CREATE VIEW v AS SELECT * FROM t;" +
          trigger("INSTEAD OF", "v", "INSERT INTO t VALUES (NEW.id, NEW.k);"));
  }
  write_layout({{"id", {"1", "2", "3"}}, {"k", {"a", "b", "c"}}}, 3);
  EXPECT_EQ(load("t"), 0) << program_.err();
  write_layout({{"id", {"4", "5"}}, {"k", {"d", "e"}}}, 2);
  EXPECT_EQ(load("v"), 0) << program_.err();
  EXPECT_EQ(query("SELECT (SELECT count(*) FROM t), (SELECT count(*) FROM days)"), "5|1");
}

class ServerFaults : public DatabaseFaults {};

// A server that is told to go ends the connection while the load still sends.
TEST_P(ServerFaults, EndALoadInTheServersOwnWords) {
  SKIP_WITHOUT_DATABASE();
  query("CREATE SEQUENCE s; CREATE TABLE t (k text);" +
        trigger(
            "BEFORE", "t",
            "IF nextval('s') = 1000 THEN PERFORM pg_terminate_backend(pg_backend_pid()); END IF;"));
  for (const std::int64_t records : {2000, 3000000}) {
    query("ALTER SEQUENCE s RESTART");
    write_layout({{"k", {"some value", "another value"}}}, records);
    EXPECT_EQ(load("t"), 1);
    EXPECT_TRUE(
        program_.err().starts_with("FATAL:  terminating connection due to administrator command\n"))
        << program_.err();
    EXPECT_TRUE(program_.err().ends_with("\nnothing was loaded\n")) << program_.err();
    EXPECT_EQ(query("SELECT count(*) FROM t"), "0");
  }
}

struct ImportCase {
  std::string table;
  std::string sqlite;
  std::string postgresql;
  int status;
  std::string says;        // behind the table's name
  std::string layout_has;  // where there is one
  std::string as_user;     // of PostgreSQL
};

TEST_P(DatabaseFaults, EndAnImportOrAreSaid) {
  SKIP_WITHOUT_DATABASE();
  const std::string no_range = "no range of values remains behind the largest that it holds ";
  const std::string full_bigint =
      "CREATE TABLE big (id bigint PRIMARY KEY, v varchar(5));"
      "INSERT INTO big VALUES (9223372036854775807, 'x')";
  const std::string full_optional =
      "CREATE TABLE room (id integer PRIMARY KEY, k bigint UNIQUE);"
      "INSERT INTO room VALUES (1, 999999999999999999)";
  // Only together unique: another column can take the part of the one that is full.
  const std::string full_pair =
      "CREATE TABLE pair (a bigint NOT NULL, b integer NOT NULL, PRIMARY KEY (a, b));"
      "INSERT INTO pair VALUES (9223372036854775807, 5)";
  const ImportCase cases[] = {
      {"big", full_bigint, full_bigint, 1,
       "error: column id: " + no_range + "(9223372036854775807), but must not be NULL\n", "", ""},
      {"room", full_optional, full_optional, 0,
       "column k: " + no_range + "(999999999999999999), stays NULL\n", "type = \"initial\"", ""},
      {"pair", full_pair, full_pair, 0, "", "start     = \"6\"", ""},
      {"wide", "CREATE TABLE wide (id INTEGER PRIMARY KEY); INSERT INTO wide VALUES (3000000000)",
       "", 0, "", "start     = \"3000000001\"\nend       = \"999999999999999999\"", ""},
      {"edge", "CREATE TABLE edge (id INTEGER PRIMARY KEY); INSERT INTO edge VALUES (2147483640)",
       "CREATE TABLE edge (id bigint PRIMARY KEY); INSERT INTO edge VALUES (2147483640)", 0, "",
       "start     = \"2147483641\"\nend       = \"999999999999999999\"", ""},
      {"full", "",
       "CREATE TABLE \"full\" (id integer PRIMARY KEY);"
       "INSERT INTO \"full\" VALUES (2147483647)",
       1, "error: column id: " + no_range + "(2147483647), but must not be NULL\n", "", ""},
      {"lost",
       "CREATE TABLE lost (id INTEGER PRIMARY KEY, a INTEGER REFERENCES nowhere,"
       " b INTEGER NOT NULL REFERENCES nowhere (id))",
       "", 1,
       "column a: refers to nowhere, which cannot be read: no such table: nowhere, stays NULL\n"
       "lost: error: column b: refers to nowhere, which cannot be read: no such table: nowhere, "
       "but "
       "must not be NULL\n",
       "", ""},
      {"astray",
       "CREATE TABLE astray_parent (id INTEGER PRIMARY KEY); INSERT INTO astray_parent VALUES (1);"
       "CREATE TABLE astray (id INTEGER PRIMARY KEY, a INTEGER REFERENCES astray_parent (gone))",
       "", 0,
       "column a: refers to astray_parent, which cannot be read: no such column: k.gone, stays "
       "NULL\n",
       "", ""},
      {"secret", "",
       "CREATE ROLE poor LOGIN; CREATE TABLE secret_parent (id integer PRIMARY KEY);"
       "INSERT INTO secret_parent VALUES (1); CREATE TABLE secret (id integer PRIMARY KEY,"
       " a integer REFERENCES secret_parent, b integer NOT NULL);"
       "GRANT SELECT, INSERT ON secret TO poor",
       0,
       "column a: refers to secret_parent, which cannot be read: permission denied for table "
       "secret_parent, stays NULL\n",
       "", "poor"},
      {"part", "",
       "CREATE TABLE parted_parent (id integer PRIMARY KEY) PARTITION BY RANGE (id);"
       "CREATE TABLE parted_parent_1 PARTITION OF parted_parent FOR VALUES FROM (1) TO (10);"
       "CREATE TABLE parted_parent_2 PARTITION OF parted_parent FOR VALUES FROM (10) TO (20);"
       "INSERT INTO parted_parent VALUES (4), (14);"
       "CREATE TABLE whole (id integer NOT NULL, k integer NOT NULL REFERENCES parted_parent)"
       " PARTITION BY RANGE (id);"
       "CREATE TABLE part PARTITION OF whole FOR VALUES FROM (1) TO (100)",
       0, "", "file = \"part.k.txt\"", ""},
      {"whole", "", "SELECT 1", 0, "", "file = \"whole.k.txt\"", ""},
      {"named", "",
       "CREATE TYPE \"time\" AS ENUM ('dawn', 'dusk'); CREATE DOMAIN \"int4\" AS varchar(3);"
       "CREATE TABLE named (a public.\"time\" NOT NULL, b public.\"int4\" NOT NULL)",
       0, "", "file = \"named.a.txt\"", ""},
  };
  for (const ImportCase& test : cases) {
    SCOPED_TRACE(test.table);
    const std::string& sql = is_sqlite() ? test.sqlite : test.postgresql;
    if (sql.empty()) continue;
    query(sql);
    fs::remove("i.toml");
    EXPECT_EQ(import(test.table, test.as_user.empty() ? "" : " user=" + test.as_user), test.status);
    std::string said = program_.err();
    if (said.starts_with(test.table + ": ")) said.erase(0, test.table.size() + 2);
    EXPECT_EQ(said, test.says);
    ASSERT_EQ(fs::exists("i.toml"), test.status == 0);
    if (test.status != 0) continue;
    const std::string layout = test::read_file("i.toml");
    EXPECT_NE(layout.find(test.layout_has), std::string::npos) << layout;
    if (test.table == "astray") continue;
    const std::string count = "SELECT count(*) FROM \"" + test.table + "\"";
    const int before = std::stoi(query(count));
    EXPECT_EQ(program_.run({"load", "i.toml", database_->target(), test.table}), 0)
        << program_.err();
    EXPECT_EQ(query(count), std::to_string(before + 10));
  }
}

// The exit status of a program that is to end soon, -1 for one that does not, or not by itself.
int status_soon(pid_t child) {
  constexpr auto longest_end = std::chrono::seconds(2);
  const auto begin = std::chrono::steady_clock::now();
  int status = 0;
  while (std::chrono::steady_clock::now() - begin < longest_end) {
    if (::waitpid(child, &status, WNOHANG) != 0) {
      return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ::kill(child, SIGKILL);
  ::waitpid(child, &status, 0);
  return -1;
}

// A name is looked up by a call that no signal ends.
TEST(DatabaseConnection, IsEndedByAnInterruptWhateverItWaitsFor) {
  const std::string target = "postgresql:host=db.example dbname=shop";
  const std::vector<std::string> commands[] = {{"load", "t.toml", target, "t"},
                                               {"import", target, "t"}};
  for (const auto& command : commands) {
    SCOPED_TRACE(command.front());
    const test::TempFolder folder;
    const test::ScopedVariable config("XDG_CONFIG_HOME", folder.file("config"));
    const test::ScopedVariable temporary("TMPDIR", folder.file("tmp"));
    fs::create_directory(folder.file("tmp"));
    fs::current_path(folder.path());
    write_layout({{"k", {"x"}}}, 10);
    const test::Program program(KORVEX_PROGRAM, folder.path());
    pid_t child = -1;
    {
      const test::ScopedVariable names("LD_PRELOAD", KORVEX_SILENT_NAME_SERVICE);
      const test::ScopedVariable order("ASAN_OPTIONS", "verify_asan_link_order=0");
      child = program.start(command);
    }
    for (int i = 0; i < 10000 && !fs::exists("asked"); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_TRUE(fs::exists("asked")) << program.err();
    ::kill(child, SIGINT);
    EXPECT_EQ(status_soon(child), 130) << program.err();
    EXPECT_TRUE(fs::is_empty("tmp"));
    fs::current_path("/");
  }
}

INSTANTIATE_TEST_SUITE_P(Databases, ServerFaults, testing::Values("PostgreSQL"),
                         [](const auto& test) { return std::string(test.param); });
INSTANTIATE_TEST_SUITE_P(Databases, DatabaseFaults, testing::Values("SQLite", "PostgreSQL"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace korvex::host
