#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/piece_team.h"
#include "run/run.h"

// How many threads may make records, beside the one that writes them. The library itself starts
// none; a program that lets it exports this function.
extern "C" __attribute__((weak, visibility("default"))) int korvex_generating_threads();

namespace korvex {

// The same; 0 where nobody allows any.
std::size_t generating_threads();

// What a team makes at a time, and what of it a thread makes in a row. A place costs less than a
// thousandth of such a chunk to go to.
inline constexpr std::size_t line_piece_bytes = 256 * 1024;
inline constexpr std::size_t line_chunk_bytes = 2 * line_piece_bytes;

// With fewer bytes ahead a team gains nothing.
inline constexpr std::size_t fewest_team_bytes = 8 * line_chunk_bytes;

// The records that a chunk should have, by what `records` of them took; 0 when a team is not worth
// it for the `left` that are to come.
Steps records_of_chunk(Steps records, std::uint64_t bytes, Steps left);

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
    std::size_t piece_bytes = line_piece_bytes;  // no more lines are added to so many
  };

  // The run is the team's until that has gone, and is then anywhere. Where it can't go to any
  // record at once, a single thread makes all of them, ahead of who takes them. Threads that end
  // for a signal give error::cancelled.
  LineTeam(Run& run, const Work& work, std::size_t threads);

  // Whether there is a thread: the system may have none, and the run is where it stood.
  bool has_threads() const { return team_->workers() > 0; }

  // The next lines; they are valid until the next call. Null after the last record. Throws
  // std::bad_alloc where a thread has failed for it.
  const LinePiece* next() { return team_->next(); }

 private:
  using Team = platform::PieceTeam<LinePiece>;

  struct Worker {
    Run* run = nullptr;
    Steps record = 0;  // where it stands
  };

  void make_chunk(Worker& worker, Steps first, Steps end, Team::Outlet& outlet) const;
  void append(Worker& worker, Steps most, LinePiece& piece) const;

  const Work work_;
  std::vector<std::unique_ptr<Run>> copies_;
  std::vector<Worker> workers_;
  std::unique_ptr<Team> team_;
};

}  // namespace korvex
