#include "platform/interruption.h"

#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <ctime>

namespace korvex::platform {

namespace {

constexpr int signal_status_base = 128;  // as shells count

// Closing a terminal sends its signal twice, and some who start programs pass on what these get
// anyway: what comes so soon is the same wish.
constexpr std::int64_t same_wish_ns = 100'000'000;

// The handler may run in any thread.
std::atomic<int> first_signal = 0;
std::atomic<std::int64_t> first_moment = 0;
static_assert(std::atomic<int>::is_always_lock_free &&
                  std::atomic<std::int64_t>::is_always_lock_free,
              "a signal handler sets them");

std::int64_t now_ns() {
  timespec now = {};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

void note_signal(int number) {
  const int error_number = errno;
  const std::int64_t now = now_ns();
  if (first_signal == 0) first_moment = now;
  int none = 0;
  // A pipe without a reader sends its signal at every write, which is no second request.
  if (!first_signal.compare_exchange_strong(none, number) && number != SIGPIPE &&
      now - first_moment > same_wish_ns) {
    ::_exit(signal_status_base + number);
  }
  errno = error_number;
}

}  // namespace

InterruptionWatch::InterruptionWatch(std::initializer_list<int> numbers) {
  first_signal = 0;
  struct sigaction action = {};
  action.sa_handler = note_signal;  // no SA_RESTART
  ::sigemptyset(&action.sa_mask);
  for (const int number : numbers) {
    struct sigaction previous = {};
    ::sigaction(number, nullptr, &previous);
    if ((previous.sa_flags & SA_SIGINFO) != 0 || previous.sa_handler != SIG_DFL) continue;
    ::sigaction(number, &action, nullptr);
    previous_.emplace_back(number, previous);
  }
}

InterruptionWatch::~InterruptionWatch() {
  for (const auto& [number, previous] : previous_) ::sigaction(number, &previous, nullptr);
  first_signal = 0;
}

int InterruptionWatch::received() { return first_signal.load(std::memory_order_relaxed); }

int InterruptionWatch::take() { return received() == 0 ? 0 : first_signal.exchange(0); }

int received_signal() {
  const int own = InterruptionWatch::received();
  return own == 0 && has_interruptions() ? korvex_received_signal() : own;
}

bool wait_until_ready(int descriptor, short events) {
  struct pollfd waiting = {descriptor, events, 0};
  while (!is_interrupted()) {
    const int ready = ::poll(&waiting, 1, wait_slice_ms);
    // The call that comes next tells what is wrong.
    if (ready > 0 || (ready < 0 && errno != EINTR)) return true;
  }
  return false;
}

}  // namespace korvex::platform
