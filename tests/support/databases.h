#pragma once

#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "support/bytes.h"
#include "support/temp_folder.h"

// Real databases for tests, asked through their own command lines, so that what is compared did not
// come through the code under test.
namespace korvex::test {

class TestDatabase {
 public:
  virtual ~TestDatabase() = default;

  // What the program's commands call it.
  virtual std::string target() const = 0;

  // The command that runs SQL from its standard input and prints rows with "|" between fields.
  virtual std::string session() const = 0;

  // The rows without the last line feed. Throws what the database says of wrong SQL.
  std::string query(const std::string& sql) const {
    write_file(folder_.file("sql"), sql);
    const std::string line = session() + " < " + folder_.file("sql") + " > " +
                             folder_.file("rows") + " 2> " + folder_.file("errors");
    if (std::system(line.c_str()) != 0) throw std::runtime_error(read_file(folder_.file("errors")));
    std::string rows = read_file(folder_.file("rows"));
    if (rows.ends_with('\n')) rows.pop_back();
    return rows;
  }

 protected:
  TempFolder folder_;
};

class SqliteFile : public TestDatabase {
 public:
  std::string target() const override { return "sqlite:" + folder_.file("test.db"); }
  std::string session() const override { return "sqlite3 -bail " + folder_.file("test.db"); }
};

// A cluster of its own in a temporary folder, reached through a socket in it and not through the
// network. It ends with this object, and with the process whatever way that ends.
class PostgresqlServer : public TestDatabase {
 public:
  // Null where the server's programs are missing.
  static std::unique_ptr<PostgresqlServer> start() {
    const std::string programs = find_programs();
    if (programs.empty()) return nullptr;
    return std::unique_ptr<PostgresqlServer>(new PostgresqlServer(programs));
  }

  ~PostgresqlServer() override {
    ::kill(server_, SIGINT);  // a fast shutdown
    ::waitpid(server_, nullptr, 0);
  }

  std::string target() const override {
    return "postgresql:host=" + folder_.path() + " user=korvex dbname=postgres";
  }
  std::string session() const override {
    return programs_ + "/psql -XAtq -v ON_ERROR_STOP=1 -h " + folder_.path() +
           " -U korvex -d postgres";
  }

 private:
  explicit PostgresqlServer(const std::string& programs) : programs_(programs) {
    // The server refuses to run as root.
    if (::geteuid() == 0) {
      const struct passwd* user = ::getpwnam("postgres");
      if (user == nullptr) user = ::getpwnam("nobody");
      if (user == nullptr) throw std::runtime_error("no user that the server may run as");
      user_ = user->pw_uid;
      group_ = user->pw_gid;
      if (::chown(folder_.path().c_str(), user_, group_) != 0) {
        throw std::runtime_error("the folder cannot be given to the server's user");
      }
    }
    const pid_t initdb = run(programs + "/initdb",
                             {"-D", folder_.file("data"), "-U", "korvex", "-A", "trust", "-E",
                              "UTF8", "--locale=C", "--no-sync"},
                             SIGKILL);
    int status = 0;
    ::waitpid(initdb, &status, 0);
    if (status != 0) throw std::runtime_error(read_file(folder_.file("log")));
    server_ = run(programs + "/postgres",
                  {"-D", folder_.file("data"), "-k", folder_.path(), "-c",
                   "listen_addresses=", "-c", "fsync=off"},
                  SIGQUIT);
    wait_until_ready();
  }

  // Debian keeps the programs of each version in a folder of its own, outside of the path.
  static std::string find_programs() {
    namespace fs = std::filesystem;
    std::string found;
    std::error_code ignored;
    for (const auto& version : fs::directory_iterator("/usr/lib/postgresql", ignored)) {
      const std::string folder = version.path().string() + "/bin";
      if (fs::exists(folder + "/initdb") && fs::exists(folder + "/postgres")) found = folder;
    }
    return found;
  }

  pid_t run(const std::string& program, const std::vector<std::string>& arguments,
            int end_signal) const {
    const pid_t child = ::fork();
    if (child != 0) return child;
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
      words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    const bool is_ready = ::chdir("/") == 0 && std::freopen("/dev/null", "r", stdin) != nullptr &&
                          (user_ == 0 || (::setgid(group_) == 0 && ::setuid(user_) == 0)) &&
                          std::freopen(folder_.file("log").c_str(), "a", stdout) != nullptr &&
                          ::dup2(STDOUT_FILENO, STDERR_FILENO) >= 0 &&
                          ::prctl(PR_SET_PDEATHSIG, end_signal) == 0;
    if (is_ready) ::execv(words[0], words.data());
    ::_exit(127);
  }

  void wait_until_ready() const {
    constexpr int attempts = 600;
    for (int i = 0; i < attempts; ++i) {
      try {
        query("SELECT 1");
        return;
      } catch (const std::runtime_error&) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
      }
    }
    throw std::runtime_error(read_file(folder_.file("log")));
  }

  const std::string programs_;
  uid_t user_ = 0;
  gid_t group_ = 0;
  pid_t server_ = -1;
};

}  // namespace korvex::test
