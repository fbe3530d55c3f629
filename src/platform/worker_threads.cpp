#include "platform/worker_threads.h"

#include <sched.h>
#include <signal.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace korvex::platform {

namespace {

// New threads have the signals blocked that their maker has.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~BlockedSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
  sigset_t before_;
};

}  // namespace

WorkerThreads::WorkerThreads(std::size_t most, Work work) : work_(std::move(work)) {
  const BlockedSignals blocked;
  // How many there are is known when the last one has started.
  const std::lock_guard lock(starting_);
  threads_.reserve(most);
  try {
    while (threads_.size() < most) {
      threads_.emplace_back([this, worker = threads_.size()] { run(worker); });
    }
  } catch (const std::exception&) {
    // The work is done by those that there are.
  }
}

void WorkerThreads::run(std::size_t worker) {
  std::size_t workers = 0;
  {
    const std::lock_guard lock(starting_);
    workers = threads_.size();
  }
  work_(worker, workers);
}

std::size_t usable_processors() {
  cpu_set_t usable;
  CPU_ZERO(&usable);
  if (::sched_getaffinity(0, sizeof usable, &usable) != 0) return 1;
  return static_cast<std::size_t>(std::max(CPU_COUNT(&usable), 1));
}

}  // namespace korvex::platform
