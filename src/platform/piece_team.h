#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <vector>

#include "platform/piece_outlet.h"
#include "platform/worker_threads.h"

namespace korvex::platform {

// Something long that several threads make in pieces, and one thread takes in order. It is divided
// into chunks: worker w of n makes the chunks w, w + n, w + 2n and so on, each in one or more
// pieces. A worker that is ahead waits, so that no more than `pieces_ahead` pieces of each exist.
//
// One thread makes, asks and destroys the team; the destructor ends the threads, after the piece
// that each is making.
template <typename Piece>
class PieceTeam {
 public:
  static constexpr std::size_t pieces_ahead = 4;

  // The way of one worker's pieces to who takes them.
  class Outlet : public PieceOutlet<Piece> {
   public:
    Piece* room() override {
      std::unique_lock lock(mutex_);
      is_changed_.wait(lock, [&] { return is_closed_ || end_ - begin_ < pieces_ahead; });
      return is_closed_ ? nullptr : &entry(end_).piece;
    }

    void hand_over(bool ends_chunk) override {
      {
        const std::lock_guard lock(mutex_);
        entry(end_++).ends_chunk = ends_chunk;
      }
      is_changed_.notify_one();
    }

   private:
    friend class PieceTeam;

    struct Entry {
      Piece piece;
      bool ends_chunk = false;
    };

    Entry& entry(std::size_t number) { return entries_[number % pieces_ahead]; }

    // The next piece, null when there will be none because the worker has failed.
    Entry* front() {
      std::unique_lock lock(mutex_);
      is_changed_.wait(lock, [&] { return begin_ < end_ || failure_; });
      return begin_ < end_ ? &entry(begin_) : nullptr;
    }

    void pop() {
      {
        const std::lock_guard lock(mutex_);
        ++begin_;
      }
      is_changed_.notify_one();
    }

    void fail(std::exception_ptr failure) {
      {
        const std::lock_guard lock(mutex_);
        failure_ = std::move(failure);
      }
      is_changed_.notify_one();
    }

    bool is_closed() {
      const std::lock_guard lock(mutex_);
      return is_closed_;
    }

    void close() {
      {
        const std::lock_guard lock(mutex_);
        is_closed_ = true;
      }
      is_changed_.notify_one();
    }

    std::mutex mutex_;
    std::condition_variable is_changed_;
    std::array<Entry, pieces_ahead> entries_;
    std::size_t begin_ = 0;  // counted over all pieces of the worker
    std::size_t end_ = 0;
    bool is_closed_ = false;
    std::exception_ptr failure_;
  };

  // Makes all pieces of a chunk, or fewer once there is no room. Called in the thread of a worker,
  // always the same one for a number of a worker. What it throws comes out of next(), after the
  // pieces that were handed over before.
  using Make =
      std::function<void(std::size_t worker, std::uint64_t chunk, PieceOutlet<Piece>& outlet)>;

  // Starts up to `workers` threads for so many chunks; workers() tells how many there are.
  PieceTeam(std::size_t workers, std::uint64_t chunks, Make make)
      : chunks_(chunks),
        make_(std::move(make)),
        outlets_(workers),
        threads_(workers, [this](std::size_t worker, std::size_t count) { run(worker, count); }) {}

  ~PieceTeam() {
    for (Outlet& outlet : outlets_) outlet.close();
  }

  // 0: the team does nothing, and must not be asked.
  std::size_t workers() const { return threads_.count(); }

  // The next piece, which is valid until the next call; null after the last one.
  Piece* next() {
    if (is_taken_) outlet().pop();
    if (is_taken_ && ends_chunk_) ++chunk_;
    is_taken_ = chunk_ < chunks_;
    if (!is_taken_) return nullptr;
    typename Outlet::Entry* const entry = outlet().front();
    if (entry == nullptr) {
      is_taken_ = false;
      std::rethrow_exception(outlet().failure_);
    }
    ends_chunk_ = entry->ends_chunk;
    return &entry->piece;
  }

 private:
  void run(std::size_t worker, std::size_t count) {
    Outlet& outlet = outlets_[worker];
    try {
      for (std::uint64_t chunk = worker; chunk < chunks_ && !outlet.is_closed(); chunk += count) {
        make_(worker, chunk, outlet);
      }
    } catch (...) {
      outlet.fail(std::current_exception());
    }
  }

  Outlet& outlet() { return outlets_[static_cast<std::size_t>(chunk_ % workers())]; }

  const std::uint64_t chunks_;
  const Make make_;
  std::vector<Outlet> outlets_;
  std::uint64_t chunk_ = 0;
  bool is_taken_ = false;
  bool ends_chunk_ = false;
  WorkerThreads threads_;  // ends before all that it works on
};

}  // namespace korvex::platform
