#include <algorithm>

#include "host/layout/failure_text.h"
#include "host/process/signals.h"
#include "host/records/record_stream.h"
#include "platform/printable_text.h"
#include "values/records.h"

namespace korvex::host {

namespace {

constexpr std::size_t data_piece_size = 256 * 1024;

class DataFileStream : public RecordStream {
 public:
  explicit DataFileStream(PreparedLayout& prepared) : prepared_(prepared), run_(prepared.run()) {}

  void go_to(RecordRange range, bool) override {
    range_ = range;
    next_ = piece_begin_ = range.first;
    failure_.clear();
    run_.seek(range.first.number());
  }

  std::string_view next() override {
    lines_.clear();
    piece_begin_ = next_;
    while (next_ < range_.end && lines_.size() < data_piece_size && failure_.empty()) {
      check_interruption();
      append(std::min(range_.end - next_, most_at_once));
    }
    return {lines_.data(), lines_.size()};
  }

  RecordCount records() const override { return next_ - range_.first; }
  const std::string& failure() const override { return failure_; }

  RecordPlace place_of(std::size_t offset) override {
    go_to({piece_begin_, range_.end}, false);
    lines_.clear();
    // One record at a time, as far as the byte is.
    append(RecordCount(1));
    while (failure_.empty() && offset >= lines_.size()) {
      offset -= lines_.size();
      lines_.clear();
      append(RecordCount(1));
    }
    const RecordNumber record = next_ - RecordCount(1);
    return {record, item_at(record, offset)};
  }

  std::optional<ByteCount> size(RecordRange range) const override {
    const auto before = run_.size(RecordCount(range.first.number()));
    const auto end = run_.size(RecordCount(range.end.number()));
    return before && end ? std::optional(*end - *before) : std::nullopt;
  }

 private:
  static constexpr RecordCount most_at_once{1 << 20};

  void append(RecordCount most) {
    const ErrorCode code = run_.append(lines_, static_cast<std::int64_t>(most.number()));
    if (code != error::none) {
      failure_ = numbered_message(code, prepared_.layout());
      return;
    }
    next_ += RecordCount(run_.line_begins().size());
  }

  std::string item_at(RecordNumber record, std::size_t offset) {
    run_.seek(record.number());
    std::vector<std::string_view> values;
    if (run_.next(values) != error::none) return {};
    for (std::size_t i = 0; i < values.size(); ++i) {
      const std::size_t frame =
          run_.fields()[i]->opening().size() + run_.fields()[i]->closing().size();
      const std::size_t size = values[i].size() + frame;
      if (offset < size) return platform::printable(prepared_.items()[i].item->name);
      offset -= size;
    }
    return {};
  }

  PreparedLayout& prepared_;
  Run& run_;
  RecordRange range_;
  RecordNumber next_;
  RecordNumber piece_begin_;
  LineBlock lines_{data_piece_size};
  std::string failure_;
};

}  // namespace

std::unique_ptr<RecordStream> data_file_stream(PreparedLayout& prepared) {
  return std::make_unique<DataFileStream>(prepared);
}

}  // namespace korvex::host
