#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "support/bytes.h"
#include "support/environment.h"
#include "support/temp_folder.h"

// The built program, ended in the middle of its work.
namespace korvex::host {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

class Interruption : public testing::Test {
 protected:
  Interruption() {
    fs::create_directory(folder.file("tmp"));
    fs::create_directory(folder.file("w"));
  }

  // `input` is opened as standard input: a terminal asks questions.
  pid_t start(const std::vector<std::string>& arguments, const std::string& input = "/dev/null") {
    const pid_t child = ::fork();
    if (child != 0) return child;
    std::vector<char*> words = {const_cast<char*>(KORVEX_PROGRAM)};
    for (const std::string& argument : arguments) {
      words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    const bool is_ready = ::freopen(input.c_str(), "r", stdin) != nullptr &&
                          ::freopen(folder.file("out").c_str(), "w", stdout) != nullptr &&
                          ::freopen(folder.file("err").c_str(), "w", stderr) != nullptr;
    if (is_ready) ::execv(words[0], words.data());
    ::_exit(127);
  }

  static void wait_until(const std::function<bool()>& is_there) {
    for (int i = 0; i < 10000 && !is_there(); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }

  // Sends the signal; the exit status, -1 when the program ended in another way or stays for long.
  static int end(pid_t child, int signal) {
    const Clock::time_point sent = Clock::now();
    ::kill(child, signal);
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) == 0) {
      // Far more than it takes, for machines with much else to do.
      if (Clock::now() - sent > std::chrono::seconds(5)) {
        ::kill(child, SIGKILL);
        ::waitpid(child, &status, 0);
        return -1;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  void write_layout(const std::string& values) const {
    test::write_file(layout(),
                     "[layout]\nkind = \"record\"\nrecords = 2000000000\nwork = \"w\"\n"
                     "data = \"d.csv\"\n[[item]]\nname = \"A\"\nattribute = \"decimal\"\n"
                     "digits = 9\n[item.values]\n" +
                         values);
  }

  void expect_nothing_left(const std::vector<std::string>& names) const {
    EXPECT_TRUE(fs::is_empty(folder.file("tmp")));
    EXPECT_TRUE(fs::is_empty(folder.file("w")));
    std::vector<std::string> found = folder.names();
    std::erase_if(found, [](const std::string& name) {
      return name == "config" || name == "tmp" || name == "w" || name == "out" || name == "err";
    });
    EXPECT_EQ(found, names);
  }

  std::string layout() const { return folder.file("l.toml"); }
  std::string file(const std::string& name) const { return folder.file(name); }

  test::TempFolder folder;
  test::ScopedVariable config_{"XDG_CONFIG_HOME", folder.file("config")};
  test::ScopedVariable temporary_{"TMPDIR", folder.file("tmp")};
};

const std::string counted = "type = \"default\"\n";

TEST_F(Interruption, ARunIsRemovedForEachSignal) {
  write_layout(counted);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const pid_t child = start({"generate", layout()});
    wait_until([&] { return fs::exists(file("d.csv")) && fs::file_size(file("d.csv")) > 0; });
    EXPECT_EQ(end(child, signal), 128 + signal);
    EXPECT_EQ(test::read_file(file("err")),
              "99079:Data generation was aborted.\nThe data file was not created.\n");
    expect_nothing_left({"d.fif", "l.toml"});
  }
}

// What a large file holds in memory is given back behind the user's back, without its locks, but
// with those that the caller has on files of its own.
TEST_F(Interruption, ALargeFileIsNoReasonToWait) {
  constexpr std::uintmax_t large = 70'000'000;
  const int inherited = ::open(file("w/lock").c_str(), O_RDWR | O_CREAT, 0600);
  ASSERT_EQ(::flock(inherited, LOCK_EX), 0);
  write_layout(counted);
  const pid_t child = start({"generate", layout()});
  wait_until([&] { return fs::exists(file("d.csv")) && fs::file_size(file("d.csv")) > large; });
  EXPECT_EQ(end(child, SIGINT), 130);
  const int other = ::open(file("w/lock").c_str(), O_RDWR | O_CLOEXEC);
  EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), -1);
  ::close(other);
  ::close(inherited);
  fs::remove(file("w/lock"));
  expect_nothing_left({"d.fif", "l.toml"});
  const pid_t next = start({"generate", layout(), "--records", "1"});
  int status = 0;
  ::waitpid(next, &status, 0);
  EXPECT_EQ(status, 0) << test::read_file(file("err"));
}

TEST_F(Interruption, AnExportLeavesTheOldFile) {
  write_layout(counted);
  test::write_file(file("o.csv"), "old");
  const pid_t child = start({"export", layout(), "-o", file("o.csv")});
  wait_until([&] {
    for (const auto& entry : fs::directory_iterator(folder.path())) {
      const std::string name = entry.path().filename();
      if (name.starts_with("o.csv.") && entry.file_size() > 0) return true;
    }
    return false;
  });
  EXPECT_EQ(end(child, SIGINT), 130);
  EXPECT_EQ(test::read_file(file("o.csv")), "old");
  expect_nothing_left({"l.toml", "o.csv"});
}

// Reading a long list asks nobody whether to go on.
TEST_F(Interruption, EveryCommandEndsWhileItPrepares) {
  std::string lines;
  for (int i = 0; i < 15'000'000; ++i) lines += "1\n";
  test::write_file(file("list"), lines);
  write_layout("type = \"enumeration\"\nfile = \"list\"\n");
  test::write_file(file("d.csv"), "old");
  const std::vector<std::vector<std::string>> commands = {
      {"generate", layout()},
      {"count", layout()},
      {"check", layout()},
      {"preview", layout()},
      {"export", layout(), "-o", file("o.csv")}};
  for (const auto& command : commands) {
    SCOPED_TRACE(command[0]);
    const pid_t child = start(command);
    wait_until([&] { return !fs::is_empty(file("tmp")) || !fs::is_empty(file("w")); });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(end(child, SIGINT), 130);
    EXPECT_EQ(test::read_file(file("d.csv")), "old");
    fs::remove(file("d.fif"));
    expect_nothing_left({"d.csv", "l.toml", "list"});
  }
}

TEST_F(Interruption, AQuestionIsNoHindrance) {
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_TRUE(::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
  const pid_t child = start({"new", "-o", file("n.toml")}, ::ptsname(terminal));
  wait_until([&] { return !test::read_file(file("err")).empty(); });
  EXPECT_EQ(end(child, SIGINT), 130);
  ::close(terminal);
  expect_nothing_left({});
}

// nohup lets a program go on.
TEST_F(Interruption, AnIgnoredSignalStaysIgnored) {
  write_layout(counted);
  ::signal(SIGHUP, SIG_IGN);
  const pid_t child = start({"generate", layout()});
  ::signal(SIGHUP, SIG_DFL);
  wait_until([&] { return fs::exists(file("d.csv")) && fs::file_size(file("d.csv")) > 0; });
  ::kill(child, SIGHUP);
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  EXPECT_EQ(::waitpid(child, nullptr, WNOHANG), 0);
  EXPECT_EQ(end(child, SIGTERM), 143);
}

}  // namespace
}  // namespace korvex::host
