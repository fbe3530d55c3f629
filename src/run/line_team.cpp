#include "run/line_team.h"

#include <algorithm>

#include "platform/interruption.h"

namespace korvex {

std::size_t generating_threads() {
  if (korvex_generating_threads == nullptr) return 0;
  return static_cast<std::size_t>(std::max(korvex_generating_threads(), 0));
}

Steps records_of_chunk(Steps records, std::uint64_t bytes, Steps left) {
  if (records == 0 || bytes / records >= line_chunk_bytes) return 0;
  const Steps chunk = line_chunk_bytes * records / bytes;
  return left / chunk < fewest_team_bytes / line_chunk_bytes ? 0 : chunk;
}

LineTeam::LineTeam(Run& run, const Work& work, std::size_t threads) : work_(work) {
  workers_.push_back({&run, work.first});
  Steps chunk = work.end - work.first;
  if (run.seeks_directly() && threads > 1) {
    chunk = work.chunk;
    while (workers_.size() < threads) {
      copies_.push_back(std::make_unique<Run>());
      if (copies_.back()->prepare_like(run) != error::none) break;
      workers_.push_back({copies_.back().get(), 0});
    }
  }
  const Steps chunks = (work.end - work.first + chunk - 1) / chunk;
  team_ = std::make_unique<Team>(
      workers_.size(), chunks,
      [this, chunk](std::size_t worker, std::uint64_t number, Team::Outlet& outlet) {
        make_chunk(workers_[worker], work_.first + number * chunk,
                   std::min(work_.end, work_.first + (number + 1) * chunk), outlet);
      });
}

void LineTeam::make_chunk(Worker& worker, Steps first, Steps end, Team::Outlet& outlet) const {
  if (worker.record != first) worker.run->seek(first);
  worker.record = first;
  bool is_over = false;
  while (!is_over) {
    LinePiece* const piece = outlet.room();
    if (piece == nullptr) return;
    piece->lines.clear();
    piece->begins.clear();
    piece->records = 0;
    while (worker.record < end && piece->lines.size() < work_.piece_bytes &&
           piece->code == error::none) {
      append(worker, end - worker.record, *piece);
    }
    is_over = worker.record == end || piece->code != error::none;
    outlet.hand_over(is_over);
  }
}

// Appends some lines to the piece, as many as the run makes at once.
void LineTeam::append(Worker& worker, Steps most, LinePiece& piece) const {
  piece.code = worker.run->append(piece.lines, static_cast<std::int64_t>(most));
  if (piece.code != error::none) return;
  const std::span<const std::size_t> begins = worker.run->line_begins();
  if (work_.tells_lines) piece.begins.insert(piece.begins.end(), begins.begin(), begins.end());
  piece.records += begins.size();
  worker.record += begins.size();
  if (platform::is_interrupted()) piece.code = error::cancelled;
}

}  // namespace korvex
