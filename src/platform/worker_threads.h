#pragma once

#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace korvex::platform {

// Data that one thread writes often is this far away from the data of others: their processors
// would take the memory around it from each other.
inline constexpr std::size_t thread_spacing = 64;

// Threads that work at the same time as the one that has started them. They block signals, which
// another thread of the process receives.
//
// The destructor waits for their end; it does not end them.
class WorkerThreads {
 public:
  // What a thread does: its number, counted from 0, and how many there are. Must not throw.
  using Work = std::function<void(std::size_t worker, std::size_t workers)>;

  // Starts `most` threads; fewer, or none, where the system has no more for this user.
  WorkerThreads(std::size_t most, Work work);
  WorkerThreads(const WorkerThreads&) = delete;
  WorkerThreads& operator=(const WorkerThreads&) = delete;

  std::size_t count() const { return threads_.size(); }

 private:
  void run(std::size_t worker);

  const Work work_;
  std::mutex starting_;
  std::vector<std::jthread> threads_;
};

// How many processors this process may use at the same time; at least 1.
std::size_t usable_processors();

}  // namespace korvex::platform
