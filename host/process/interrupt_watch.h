#pragma once

#include <signal.h>

namespace korvex::host {

// Thrown where a command notices that its user wants it to end.
struct Interrupted {
  int exit_status;
};

// While one is alive, SIGINT, SIGTERM and SIGHUP ask the command to end in order instead of ending
// the process: for a command that has something to undo, and no longer than it has. A signal that
// was ignored stays so. Calls that wait are interrupted by them, and must not wait longer than
// wait_slice_ms in one go: a signal may come just before the wait. The modules of databases use the
// program's own.
class __attribute__((visibility("default"))) InterruptWatch {
 public:
  static constexpr int wait_slice_ms = 20;

  InterruptWatch();
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  static bool is_requested();

  // Throws Interrupted once the end was asked for.
  static void check();

 private:
  static constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};
  struct sigaction previous_[3] = {};
};

}  // namespace korvex::host
