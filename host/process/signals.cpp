#include "host/process/signals.h"

#include <signal.h>

#include <initializer_list>

namespace korvex::host {

namespace {

constexpr std::initializer_list<int> watched_signals = {SIGINT, SIGTERM, SIGHUP, SIGPIPE};

}  // namespace

void watch_interruptions() {
  // A file that reaches the size limit fails to be written, which is said; a handler, other than
  // ignoring, is not passed on to the programs that are started.
  struct sigaction size_limit = {};
  size_limit.sa_handler = [](int) {};
  ::sigaction(SIGXFSZ, &size_limit, nullptr);
  static const platform::InterruptionWatch watch(watched_signals);
}

void ignore_interruptions() {
  for (const int signal : watched_signals) ::signal(signal, SIG_IGN);
}

}  // namespace korvex::host

int korvex_received_signal() { return korvex::platform::InterruptionWatch::received(); }
