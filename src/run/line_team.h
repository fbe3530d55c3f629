#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "run/record_chunks.h"
#include "run/run.h"

// How many threads may make records together. The library itself starts none; a program that lets
// it exports this function.
extern "C" __attribute__((weak, visibility("default"))) int korvex_generating_threads();

namespace korvex {

// The same; 0 where nobody allows any.
std::size_t generating_threads();

// Lines as a thread of a team makes them.
struct LinePiece {
  LineBlock lines{0};
  Steps records = 0;
  std::vector<std::size_t> begins;  // of the lines, where they are told
  ErrorCode code = error::none;     // what ends the run after them
};

// The lines of a run from one record to another, made by threads, in their order.
class LineTeam {
 public:
  struct Work {
    Steps first = 0;  // where the run is
    Steps end = 0;    // after `first`
    Steps chunk = 0;  // records
    bool tells_lines = false;
    std::size_t piece_bytes = team_piece_bytes;  // no more lines are added to so many
  };

  // Takes the next lines, one thread at a time. False ends the team.
  using Take = std::function<bool(const LinePiece& piece)>;

  // Called after some of them, and at the end: in the calling thread, while no lines are taken.
  // False ends the team.
  using Watch = std::function<bool()>;

  // The run is the team's until that has gone, and is then anywhere. Threads that end for a signal
  // give error::cancelled.
  LineTeam(Run& run, const Work& work, std::size_t threads);

  // Has all lines taken. Where the run can't go to any record at once, a single thread makes all of
  // them, ahead of the caller, who takes them. False when there is no such thread: the system may
  // have none, and the run is where it stood. Throws std::bad_alloc where a thread has failed for
  // it.
  bool run(platform::PieceTaker taker, const Take& take, const Watch& watch);

 private:
  // Lines that one of the threads makes.
  class Source {
   public:
    using Piece = LinePiece;

    // The run is at the record `next`.
    Source(Run& run, const Work& work, Steps next) : run_(&run), work_(work), next_(next) {}

    void go_to(Steps first, Steps end);
    bool fill(LinePiece& piece);

   private:
    void append(LinePiece& piece);

    Run* run_;
    Work work_;
    Steps next_;
    Steps end_ = 0;
  };

  struct alignas(platform::thread_spacing) Copy {
    Run run;
  };

  const bool seeks_directly_;
  std::vector<std::unique_ptr<Copy>> copies_;
  std::unique_ptr<RecordChunks<Source>> chunks_;
};

}  // namespace korvex
