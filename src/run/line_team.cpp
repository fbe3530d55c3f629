#include "run/line_team.h"

#include <algorithm>

#include "platform/interruption.h"

namespace korvex {

std::size_t generating_threads() {
  if (korvex_generating_threads == nullptr) return 0;
  return static_cast<std::size_t>(std::max(korvex_generating_threads(), 0));
}

LineTeam::LineTeam(Run& run, const Work& work, std::size_t threads)
    : seeks_directly_(run.seeks_directly()) {
  std::vector<Source> sources = {{run, work, work.first}};
  while (seeks_directly_ && sources.size() < threads) {
    copies_.push_back(std::make_unique<Copy>());
    if (copies_.back()->run.prepare_like(run) != error::none) break;
    sources.emplace_back(copies_.back()->run, work, 0);
  }
  chunks_ =
      std::make_unique<RecordChunks<Source>>(std::move(sources), work.first, work.end,
                                             seeks_directly_ ? work.chunk : work.end - work.first);
}

bool LineTeam::run(platform::PieceTaker taker, const Take& take, const Watch& watch) {
  if (taker == platform::PieceTaker::maker && seeks_directly_) {
    chunks_->relay(take, watch);
    return true;
  }
  const auto team = chunks_->team();
  if (team->workers() == 0) return false;
  for (const LinePiece* piece = team->next(); piece != nullptr; piece = team->next()) {
    if (!take(*piece) || !watch()) break;
  }
  return true;
}

void LineTeam::Source::go_to(Steps first, Steps end) {
  if (next_ != first) run_->seek(first);
  next_ = first;
  end_ = end;
}

bool LineTeam::Source::fill(LinePiece& piece) {
  piece.lines.clear();
  piece.begins.clear();
  piece.records = 0;
  piece.code = error::none;
  while (next_ < end_ && piece.lines.size() < work_.piece_bytes && piece.code == error::none) {
    append(piece);
  }
  return next_ == end_ || piece.code != error::none;
}

// Appends some lines to the piece, as many as the run makes at once.
void LineTeam::Source::append(LinePiece& piece) {
  piece.code = run_->append(piece.lines, static_cast<std::int64_t>(end_ - next_));
  if (piece.code != error::none) return;
  const std::span<const std::size_t> begins = run_->line_begins();
  if (work_.tells_lines) piece.begins.insert(piece.begins.end(), begins.begin(), begins.end());
  piece.records += begins.size();
  next_ += begins.size();
  if (platform::is_interrupted()) piece.code = error::cancelled;
}

}  // namespace korvex
