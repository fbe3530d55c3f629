#include "platform/process.h"

#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

#include "platform/interruption.h"

extern char** environ;

namespace korvex::platform {

namespace {

void wait_for(pid_t child) {
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR && !is_interrupted()) continue;
}

// An editor that nobody waits for stays in the process table until somebody asks how it ended.
void forget_ended(std::vector<pid_t>& editors) {
  std::erase_if(editors, [](pid_t child) { return ::waitpid(child, nullptr, WNOHANG) != 0; });
}

std::string editor_program() {
  const char* chosen = std::getenv("KORVEX_EDITOR");
  return chosen != nullptr && *chosen != '\0' ? chosen : "xdg-open";
}

}  // namespace

std::string editor_command(const std::string& path) {
  return editor_program() + " \"" + path + "\"";
}

std::error_code run_editor(const std::string& path, EditorWait wait) {
  static std::vector<pid_t> running;
  forget_ended(running);
  std::string program = editor_program();
  std::string argument = path;
  char* arguments[] = {program.data(), argument.data(), nullptr};
  pid_t child = 0;
  const int failure = ::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments, environ);
  if (failure != 0) return {failure, std::generic_category()};
  if (wait == EditorWait::on_terminal && ::isatty(STDIN_FILENO) == 1) {
    wait_for(child);
  } else {
    running.push_back(child);
  }
  return {};
}

}  // namespace korvex::platform
