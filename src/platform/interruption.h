#pragma once

#include <signal.h>

#include <cerrno>
#include <initializer_list>
#include <utility>
#include <vector>

// How the process is asked to end in order: a signal sets a flag, calls that wait return, and the
// code that sees the flag undoes what it has begun. What cannot be interrupted is finished first.
//
// The flag is the program's, for all that it loads: the library, the dialogs and the plug-ins of
// databases have none of their own. A program that links nothing but the library has no such flag;
// the library watches SIGINT for it while a run shows its progress on the console.

// The signal that has asked the program to end, 0 for none. A program that ends in order exports
// it.
extern "C" __attribute__((weak, visibility("default"))) int korvex_received_signal();

namespace korvex::platform {

// Handles signals while it exists, if their action is the default: one that is ignored, or that the
// process handles, stays as it is. Calls that wait then fail with EINTR. A second signal ends the
// process at once. One watch at a time.
class InterruptionWatch {
 public:
  explicit InterruptionWatch(std::initializer_list<int> numbers);
  ~InterruptionWatch();
  InterruptionWatch(const InterruptionWatch&) = delete;
  InterruptionWatch& operator=(const InterruptionWatch&) = delete;

  // The signal that came first, 0 for none.
  static int received();

  // The same once: the next one counts as the first again.
  static int take();

 private:
  std::vector<std::pair<int, struct sigaction>> previous_;
};

// The signal that has asked the process to end, 0 for none.
int received_signal();

inline bool is_interrupted() { return received_signal() != 0; }

// Whether this process is one that is asked to end in that way.
inline bool has_interruptions() { return korvex_received_signal != nullptr; }

// Waits until the descriptor is ready for `events`, as poll() has them. False when the process is
// to end meanwhile.
bool wait_until_ready(int descriptor, short events);

// A pause between two looks at the flag: a signal may come just before a call that waits, or in
// another thread.
inline constexpr int wait_slice_ms = 20;

// A call interrupted this many times in a row is a failure: no run may hang on it.
inline constexpr int max_interruptions = 100;

// Makes a system call again when a signal came in between that asks for nothing.
template <typename Call>
auto retry_interrupted(Call call) {
  auto result = call();
  for (int i = 0; result < 0 && errno == EINTR && i < max_interruptions; ++i) {
    if (is_interrupted()) {
      errno = EINTR;
      break;
    }
    result = call();
  }
  return result;
}

}  // namespace korvex::platform
