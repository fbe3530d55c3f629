#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "courses/steps.h"
#include "platform/piece_outlet.h"
#include "platform/piece_relay.h"
#include "platform/piece_team.h"
#include "platform/worker_threads.h"

namespace korvex {

// What a team makes at a time: no more is added to so many bytes, which a processor's cache holds.
inline constexpr std::size_t team_piece_bytes = 512 * 1024;

// With fewer bytes ahead a team gains nothing.
inline constexpr std::size_t fewest_team_bytes = 8 * team_piece_bytes;

// The records that a chunk should have to be one piece, also where records get somewhat longer, by
// what `records` of them took; 0 when a team is not worth it for the `left` that are to come.
inline Steps records_of_chunk(Steps records, std::uint64_t bytes, Steps left) {
  constexpr std::uint64_t chunk_bytes = team_piece_bytes / 4 * 3;
  if (records == 0 || bytes / records >= chunk_bytes) return 0;
  const Steps chunk = chunk_bytes * records / bytes;
  return left / chunk < fewest_team_bytes / chunk_bytes ? 0 : chunk;
}

// Records in a row, in chunks that several threads make. Each has a source of its own, which is
// moved to where a chunk begins.
//
// A source has a type Piece, and
//   void go_to(Steps first, Steps end): what follows are these records;
//   bool fill(Piece& piece): puts the next of them into the piece; whether they have ended.
template <typename Source>
class RecordChunks {
 public:
  using Piece = typename Source::Piece;
  using Team = platform::PieceTeam<Piece>;
  using Relay = platform::PieceRelay<Piece>;

  // The records from `first` on and before `end`, at least one.
  RecordChunks(std::vector<Source> sources, Steps first, Steps end, Steps chunk)
      : first_(first), end_(end), chunk_(chunk) {
    for (Source& source : sources) seats_.push_back({std::move(source)});
  }

  // Gives the pieces to the thread that asks for them.
  std::unique_ptr<Team> team() { return std::make_unique<Team>(seats_.size(), count(), maker()); }

  // Has each piece delivered by who has made it.
  void relay(typename Relay::Deliver deliver, typename Relay::Watch watch) {
    Relay(count(), maker(), std::move(deliver), std::move(watch)).run(seats_.size());
  }

 private:
  Steps count() const { return (end_ - first_ + chunk_ - 1) / chunk_; }

  typename Relay::Make maker() {
    return [this](std::size_t worker, std::uint64_t number, platform::PieceOutlet<Piece>& outlet) {
      const Steps begin = first_ + number * chunk_;
      make(seats_[worker].source, begin, std::min(end_ - begin, chunk_), outlet);
    };
  }

  static void make(Source& source, Steps begin, Steps count, platform::PieceOutlet<Piece>& outlet) {
    source.go_to(begin, begin + count);
    for (bool is_over = false; !is_over;) {
      Piece* const piece = outlet.room();
      if (piece == nullptr) return;
      is_over = source.fill(*piece);
      outlet.hand_over(is_over);
    }
  }

  struct alignas(platform::thread_spacing) Seat {
    Source source;
  };

  std::vector<Seat> seats_;
  const Steps first_;
  const Steps end_;
  const Steps chunk_;
};

}  // namespace korvex
