#include "platform/process.h"

#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

extern char** environ;

namespace korvex::platform {

int run_editor(const std::string& path) {
  const char* chosen = std::getenv("KORVEX_EDITOR");
  std::string program = chosen != nullptr && *chosen != '\0' ? chosen : "xdg-open";
  std::string argument = path;
  char* arguments[] = {program.data(), argument.data(), nullptr};
  pid_t child = 0;
  const int failure = ::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments, environ);
  if (failure == 0 && ::isatty(STDIN_FILENO) == 1) {
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
  }
  return failure;
}

}  // namespace korvex::platform
