#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <mutex>
#include <vector>

#include "platform/piece_outlet.h"
#include "platform/worker_threads.h"

namespace korvex::platform {

// Something long that several threads make, each of which delivers what it has made itself, when
// everything before it has been delivered: then the bytes are still in the cache of the processor
// that needs them, and no thread has to be woken for each piece. The thread that runs the relay is
// one of them.
//
// It is divided into chunks: worker w of n makes the chunks w, w + n, w + 2n and so on, each in one
// or more pieces. A worker has one piece at a time.
template <typename Piece>
class PieceRelay {
 public:
  // Makes all pieces of a chunk, or fewer once there is no room. Called in the thread of a worker,
  // always the same one for a number of a worker. Throws nothing after the last piece.
  using Make =
      std::function<void(std::size_t worker, std::uint64_t chunk, PieceOutlet<Piece>& outlet)>;

  // Takes the next piece, in the thread that has made it, while no other takes any. False ends the
  // relay.
  using Deliver = std::function<bool(const Piece& piece)>;

  // Called now and then, while no piece is taken, and after the last one: always in the thread that
  // runs the relay. False ends it.
  using Watch = std::function<bool()>;

  PieceRelay(std::uint64_t chunks, Make make, Deliver deliver, Watch watch)
      : chunks_(chunks),
        make_(std::move(make)),
        deliver_(std::move(deliver)),
        watch_(std::move(watch)) {}

  // Delivers all chunks with up to so many workers, this thread among them; fewer where the system
  // has no more threads. Throws what a worker threw, after the pieces before that.
  void run(std::size_t workers) {
    seats_ = std::vector<Seat>(workers);
    {
      const WorkerThreads threads(workers - 1, [this](std::size_t worker, std::size_t count) {
        work(worker + 1, count + 1);
      });
      work(0, threads.count() + 1);
    }
    if (failure_) std::rethrow_exception(failure_);
    if (turn_ != over) watch_();
  }

 private:
  static constexpr std::uint64_t over = std::numeric_limits<std::uint64_t>::max();

  // A turn takes some ten microseconds, and a thread that sleeps takes longer to wake up: who comes
  // too late lets the next one sleep, too.
  static constexpr int looks_before_sleep = 10'000;

  // What a thread needs of its own.
  struct alignas(thread_spacing) Seat {
    Piece piece;
    std::condition_variable is_called;
  };

  class Outlet : public PieceOutlet<Piece> {
   public:
    Outlet(PieceRelay& relay, std::size_t worker, std::size_t count)
        : relay_(relay), worker_(worker), count_(count) {}

    Piece* room() override { return relay_.is_over() ? nullptr : &relay_.seats_[worker_].piece; }

    void hand_over(bool ends_chunk) override {
      if (!relay_.wait_for_turn(worker_, chunk)) return;
      const bool goes_on =
          relay_.deliver_(relay_.seats_[worker_].piece) && (worker_ != 0 || relay_.watch_());
      if (!goes_on) {
        relay_.end();
      } else if (ends_chunk) {
        relay_.pass_on(chunk, count_);
      }
    }

    std::uint64_t chunk = 0;

   private:
    PieceRelay& relay_;
    const std::size_t worker_;
    const std::size_t count_;
  };

  void work(std::size_t worker, std::size_t count) {
    Outlet outlet(*this, worker, count);
    for (outlet.chunk = worker; outlet.chunk < chunks_ && !is_over(); outlet.chunk += count) {
      try {
        make_(worker, outlet.chunk, outlet);
      } catch (...) {
        if (!wait_for_turn(worker, outlet.chunk)) return;
        failure_ = std::current_exception();
        end();
      }
    }
  }

  bool is_over() const { return turn_.load(std::memory_order_relaxed) == over; }

  // False when the relay is over. Sleeps until only one chunk is before this one, and then for its
  // end only if that takes long.
  bool wait_for_turn(std::size_t worker, std::uint64_t chunk) {
    if (chunk > 0) sleep_until(worker, chunk - 1);
    for (int i = 0; i < looks_before_sleep && turn_.load(std::memory_order_acquire) < chunk; ++i) {
      pause();
    }
    sleep_until(worker, chunk);
    return turn_.load(std::memory_order_acquire) == chunk;
  }

  void sleep_until(std::size_t worker, std::uint64_t turn) {
    if (turn_.load(std::memory_order_acquire) >= turn) return;
    std::unique_lock lock(mutex_);
    seats_[worker].is_called.wait(lock, [&] { return turn_ >= turn; });
  }

  // To give the processor to others would take longer than the turn.
  static void pause() {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#endif
  }

  // Both are called by the thread that has the turn.
  void pass_on(std::uint64_t chunk, std::size_t count) {
    set_turn(chunk + 1);
    for (const std::uint64_t next : {chunk + 1, chunk + 2}) {
      seats_[next % count].is_called.notify_one();
    }
  }

  void end() {
    set_turn(over);
    for (Seat& seat : seats_) seat.is_called.notify_one();
  }

  void set_turn(std::uint64_t turn) {
    const std::lock_guard lock(mutex_);
    turn_.store(turn, std::memory_order_release);
  }

  const std::uint64_t chunks_;
  const Make make_;
  const Deliver deliver_;
  const Watch watch_;
  std::vector<Seat> seats_;
  std::mutex mutex_;
  // The chunk that may be delivered. It changes while the mutex is held, for those who sleep.
  alignas(thread_spacing) std::atomic<std::uint64_t> turn_ = 0;
  std::exception_ptr failure_;
};

}  // namespace korvex::platform
