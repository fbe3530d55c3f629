#include "host/process/interrupt_watch.h"

#include <atomic>
#include <iterator>

namespace korvex::host {

namespace {

constexpr int signal_status_base = 128;  // as shells count

std::atomic<int> received_signal = 0;  // the handler may run in any thread

void note_signal(int number) { received_signal = number; }

}  // namespace

InterruptWatch::InterruptWatch() {
  received_signal = 0;
  struct sigaction action = {};
  action.sa_handler = note_signal;
  ::sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < std::size(signals); ++i) {
    ::sigaction(signals[i], nullptr, &previous_[i]);
    if (previous_[i].sa_handler != SIG_IGN) ::sigaction(signals[i], &action, nullptr);
  }
}

InterruptWatch::~InterruptWatch() {
  for (std::size_t i = 0; i < std::size(signals); ++i) {
    ::sigaction(signals[i], &previous_[i], nullptr);
  }
}

bool InterruptWatch::is_requested() { return received_signal.load(std::memory_order_relaxed) != 0; }

void InterruptWatch::check() {
  if (is_requested()) throw Interrupted{signal_status_base + received_signal.load()};
}

}  // namespace korvex::host
