#include "platform/quiet_write.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

#include "platform/interruption.h"

namespace korvex::platform {

namespace {

sigset_t set_of(std::initializer_list<int> signals) {
  sigset_t set;
  ::sigemptyset(&set);
  for (const int signal : signals) ::sigaddset(&set, signal);
  return set;
}

void take_back(const sigset_t& signals) {
  constexpr timespec at_once = {};
  retry_interrupted([&] { return ::sigtimedwait(&signals, nullptr, &at_once); });
}

}  // namespace

ssize_t write_quietly(int descriptor, const void* data, std::size_t size) {
  sigset_t raised = set_of({SIGPIPE, SIGXFSZ});
  sigset_t mask;
  sigset_t waiting;
  ::sigemptyset(&waiting);
  ::pthread_sigmask(SIG_BLOCK, &raised, &mask);
  // Only a signal that the host itself holds back can have been waiting.
  if (::sigismember(&mask, SIGPIPE) == 1 || ::sigismember(&mask, SIGXFSZ) == 1) {
    ::sigpending(&waiting);
  }
  const ssize_t written = ::write(descriptor, data, size);
  const int failure = written < 0 ? errno : 0;
  // A pipe whose reader leaves in the middle of a write raises one, too, and answers with what the
  // reader took.
  if (written < 0 || static_cast<std::size_t>(written) < size) {
    for (const int signal : {SIGPIPE, SIGXFSZ}) {
      if (::sigismember(&waiting, signal) == 1) ::sigdelset(&raised, signal);
    }
    take_back(raised);
  }
  ::pthread_sigmask(SIG_SETMASK, &mask, nullptr);
  if (failure != 0) errno = failure;
  return written;
}

void print_error(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written =
        retry_interrupted([&] { return write_quietly(STDERR_FILENO, text.data(), text.size()); });
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace korvex::platform
