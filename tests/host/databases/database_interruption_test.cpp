#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "support/databases.h"
#include "support/environment.h"
#include "support/program.h"

// Commands that work on a database, ended in the middle of their work.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* layout = R"([layout]
kind = "table"
data = "t.csv"
records = 2000000000
[[item]]
name = "k"
attribute = "decimal"
digits = 9
values = { type = "default" }
)";

// The exit status of a program that is to end soon, -1 for one that does not, or not by itself.
// Much more than the 100 ms that a user may notice: the machine of a test has other work too.
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

class InterruptedDatabase : public testing::Test {
 protected:
  InterruptedDatabase() {
    fs::current_path(folder_.path());
    fs::create_directory("tmp");
    test::write_file("t.toml", layout);
  }
  ~InterruptedDatabase() override { fs::current_path("/"); }

  test::TempFolder folder_;
  test::ScopedVariable config_{"XDG_CONFIG_HOME", folder_.file("config")};
  // What a program leaves in its temporary folder is found there.
  test::ScopedVariable temporary_{"TMPDIR", folder_.file("tmp")};
  const test::Program program_{KORVEX_PROGRAM, folder_.path()};
};

class InterruptedLoad : public InterruptedDatabase,
                        public testing::WithParamInterface<const char*> {};

// While it loads, and while it waits for somebody else's lock.
TEST_P(InterruptedLoad, KeepsNothing) {
  constexpr auto a_while = std::chrono::milliseconds(300);
  const bool is_sqlite = std::string(GetParam()) == "SQLite";
  std::unique_ptr<test::TestDatabase> database;
  {
    const test::ScopedVariable elsewhere("TMPDIR", std::nullopt);
    if (is_sqlite) {
      database = std::make_unique<test::SqliteFile>();
    } else {
      database = test::PostgresqlServer::start();
    }
  }
  if (!database) GTEST_SKIP() << "the programs of a PostgreSQL server are not installed";
  database->query("CREATE TABLE t (k integer)");
  for (const bool is_locked : {false, true}) {
    FILE* other = ::popen((database->session() + " > /dev/null").c_str(), "w");
    if (is_locked) {
      std::fputs(is_sqlite ? "BEGIN IMMEDIATE;\n" : "BEGIN; LOCK TABLE t;\n", other);
      std::fflush(other);
      std::this_thread::sleep_for(a_while);
    }
    const int signal = is_locked ? SIGTERM : SIGINT;
    const pid_t child = program_.start({"load", "t.toml", database->target(), "t"});
    for (int i = 0; i < 10000 && fs::is_empty("tmp"); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    std::this_thread::sleep_for(a_while);
    ::kill(child, signal);
    EXPECT_EQ(status_soon(child), 128 + signal) << program_.err();
    ::pclose(other);
    EXPECT_EQ(program_.err(), "nothing was loaded\n");
    EXPECT_EQ(database->query("SELECT count(*) FROM t"), "0");
    EXPECT_TRUE(fs::is_empty("tmp"));
  }
}

INSTANTIATE_TEST_SUITE_P(Databases, InterruptedLoad, testing::Values("SQLite", "PostgreSQL"),
                         [](const auto& test) { return std::string(test.param); });

// A name is looked up by a call that no signal ends.
TEST_F(InterruptedDatabase, DoesNotWaitForANameService) {
  const std::string target = "postgresql:host=db.example dbname=shop";
  const std::vector<std::string> commands[] = {{"load", "t.toml", target, "t"},
                                               {"import", target, "t"}};
  for (const auto& command : commands) {
    SCOPED_TRACE(command.front());
    pid_t child = -1;
    {
      const test::ScopedVariable names("LD_PRELOAD", KORVEX_SILENT_NAME_SERVICE);
      const test::ScopedVariable order("ASAN_OPTIONS", "verify_asan_link_order=0");
      child = program_.start(command);
    }
    for (int i = 0; i < 10000 && !fs::exists("asked"); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_TRUE(fs::remove("asked")) << program_.err();
    ::kill(child, SIGINT);
    EXPECT_EQ(status_soon(child), 130) << program_.err();
    EXPECT_TRUE(fs::is_empty("tmp"));
  }
}

}  // namespace
}  // namespace korvex::host
