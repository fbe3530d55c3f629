#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/bytes.h"

namespace korvex::test {

// Runs the built program with its output in two files of a folder.
class Program {
 public:
  Program(const std::string& path, const std::string& folder) : path_(path), folder_(folder) {}

  pid_t start(const std::vector<std::string>& arguments, const std::string& output = "") const {
    const pid_t child = ::fork();
    if (child != 0) return child;
    std::vector<char*> words = {const_cast<char*>(path_.c_str())};
    for (const std::string& argument : arguments) {
      words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    if (std::freopen("/dev/null", "r", stdin) == nullptr ||
        std::freopen((output.empty() ? folder_ + "/stdout" : output).c_str(), "w", stdout) ==
            nullptr ||
        std::freopen((folder_ + "/stderr").c_str(), "w", stderr) == nullptr) {
      ::_exit(126);
    }
    ::execv(words[0], words.data());
    ::_exit(127);
  }

  // The exit status, -1 for a program that a signal ended.
  static int wait_for(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  int run(const std::vector<std::string>& arguments) const { return wait_for(start(arguments)); }

  std::string out() const { return read_file(folder_ + "/stdout"); }
  std::string err() const { return read_file(folder_ + "/stderr"); }

 private:
  const std::string path_;
  const std::string folder_;
};

}  // namespace korvex::test
