#include "host/records/stream_team.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/process/signals.h"
#include "run/line_team.h"
#include "run/record_chunks.h"

namespace korvex::host {

namespace {

// Bytes of whole records, as a thread of the team makes them.
struct StreamPiece {
  RecordRange records;
  std::string text;
  std::string failure;
};

// A thread's own stream.
struct Worker {
  std::unique_ptr<PreparedLayout> prepared;
  std::unique_ptr<RecordStream> stream;
};

class StreamTeam : public RecordStream {
 public:
  StreamTeam(PreparedLayout& prepared, StreamMaker make, std::size_t threads)
      : prepared_(prepared), make_(std::move(make)), threads_(threads), own_(make_(prepared)) {}

  void go_to(RecordRange range, bool has_head) override {
    team_.reset();
    piece_ = nullptr;
    range_ = range;
    bytes_ = 0;
    next_ = range.first;
    may_start_ = true;
    own_->go_to(range, has_head);
  }

  std::string_view next() override {
    if (team_ == nullptr && may_start_ && bytes_ >= team_piece_bytes) start();
    if (team_ == nullptr) {
      const std::string_view text = own_->next();
      bytes_ += text.size();
      next_ = range_.first + own_->records();
      return text;
    }
    if (!failure().empty()) return {};
    piece_ = team_->next();
    if (piece_ == nullptr) return {};
    next_ = piece_->records.end;
    return piece_->text;
  }

  RecordCount records() const override { return next_ - range_.first; }

  const std::string& failure() const override {
    return piece_ != nullptr ? piece_->failure : own_->failure();
  }

  RecordPlace place_of(std::size_t offset) override {
    if (team_ == nullptr) return own_->place_of(offset);
    const RecordRange records = {piece_->records.first, range_.end};
    team_.reset();
    piece_ = nullptr;
    own_->go_to(records, false);
    std::size_t size = own_->next().size();
    for (; offset >= size && size > 0; size = own_->next().size()) offset -= size;
    return own_->place_of(offset);
  }

  std::optional<ByteCount> size(RecordRange range) const override { return own_->size(range); }

 private:
  using Team = platform::PieceTeam<StreamPiece>;

  // A layout that is not plain goes to any record by its own means.
  bool seeks_directly() const { return !prepared_.is_plain() || prepared_.run().seeks_directly(); }

  void start() {
    may_start_ = false;
    const Steps left = (range_.end - next_).number();
    Steps chunk = records_of_chunk(records().number(), bytes_, left);
    if (chunk == 0) return;
    if (!seeks_directly()) {
      chunk = left;
    } else if (!make_workers()) {
      return;
    }
    // The first thread takes the stream that is there.
    const std::size_t workers = seeks_directly() ? workers_.size() + 1 : 1;
    auto team = std::make_unique<Team>(
        workers, (left + chunk - 1) / chunk,
        [this, first = next_, chunk](std::size_t worker, std::uint64_t number,
                                     platform::PieceOutlet<StreamPiece>& outlet) {
          RecordStream& stream = worker == 0 ? *own_ : *workers_[worker - 1].stream;
          const RecordNumber begin = first + RecordCount(number * chunk);
          make_chunk(stream, {begin, std::min(range_.end, begin + RecordCount(chunk))}, outlet);
        });
    if (team->workers() > 0) team_ = std::move(team);
  }

  bool make_workers() {
    while (workers_.size() + 1 < threads_) {
      Worker worker;
      worker.prepared = std::make_unique<PreparedLayout>();
      if (!worker.prepared->prepare_like(prepared_)) return false;
      worker.stream = make_(*worker.prepared);
      workers_.push_back(std::move(worker));
    }
    return true;
  }

  void make_chunk(RecordStream& stream, RecordRange range,
                  platform::PieceOutlet<StreamPiece>& outlet) const {
    // One thread alone goes on where the stream is.
    if (seeks_directly()) stream.go_to(range, false);
    const RecordCount before = stream.records();
    const auto reached = [&] {
      return range.first + RecordCount(stream.records().number() - before.number());
    };
    for (bool is_over = false; !is_over;) {
      StreamPiece* const piece = outlet.room();
      if (piece == nullptr) return;
      piece->text.clear();
      piece->records.first = reached();
      for (bool is_full = false; !is_full && !is_over;) {
        const std::string_view text = stream.next();
        piece->text += text;
        is_over = text.empty();
        is_full = piece->text.size() >= team_piece_bytes;
      }
      piece->records.end = reached();
      piece->failure = stream.failure();
      is_over |= piece->records.end == range.end || !piece->failure.empty();
      outlet.hand_over(is_over);
    }
  }

  PreparedLayout& prepared_;
  const StreamMaker make_;
  const std::size_t threads_;
  std::unique_ptr<RecordStream> own_;
  std::vector<Worker> workers_;

  RecordRange range_;
  RecordNumber next_;
  std::uint64_t bytes_ = 0;  // before the team
  bool may_start_ = true;
  const StreamPiece* piece_ = nullptr;
  std::unique_ptr<Team> team_;  // ends before all that it works on
};

}  // namespace

std::unique_ptr<RecordStream> stream_by_threads(PreparedLayout& prepared, const StreamMaker& make,
                                                std::size_t threads) {
  return std::make_unique<StreamTeam>(prepared, make, threads);
}

}  // namespace korvex::host
