#include "host/process/signals.h"
#include "host/records/record_source.h"
#include "host/records/record_stream.h"
#include "host/text/code_page_text.h"
#include "platform/codepage.h"
#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t export_piece_size = 64 * 1024;

// The records as the chosen dialect takes them.
class ExportStream : public RecordStream {
 public:
  ExportStream(PreparedLayout& prepared, const FormatChoices& choices)
      : prepared_(prepared), choices_(choices), source_(prepared) {
    choices_.table = sql_table(choices, prepared.layout());
    for (const PreparedItem& item : prepared.written()) {
      names_.push_back(item.item->name);
      if (!choices_.in_code_page) continue;
      // The layout says where it has a name that the code page lacks, which leaves it empty here.
      names_.back() = platform::from_utf8(item.item->name).value_or(std::string());
    }
    encoded_.resize(names_.size());
    format_ = make_record_format(choices_, names_, prepared.written());
  }

  void go_to(RecordRange range, bool has_head) override {
    range_ = range;
    next_ = piece_begin_ = range.first;
    failure_.clear();
    has_head_ = piece_has_head_ = has_head;
    source_.seek(range.first);
    format_->go_to(range.first);
  }

  std::string_view next() override {
    text_.clear();
    piece_begin_ = next_;
    piece_has_head_ = has_head_;
    append_head();
    const bool by_rows = !prepared_.is_plain() && !encodes();
    while (next_ < range_.end && text_.size() < export_piece_size && failure_.empty()) {
      if (by_rows) {
        append_rows();
      } else {
        append();
      }
    }
    return text_;
  }

  RecordCount records() const override { return next_ - range_.first; }
  const std::string& failure() const override { return failure_; }

  RecordPlace place_of(std::size_t offset) override {
    go_to({piece_begin_, range_.end}, piece_has_head_);
    text_.clear();
    append_head();
    if (offset < text_.size()) return {piece_begin_, {}};
    std::vector<std::size_t> ends;
    format_->tell_field_ends(&ends);
    while (next_ < range_.end && text_.size() <= offset && failure_.empty()) {
      ends.clear();
      append();
    }
    format_->tell_field_ends(nullptr);
    const RecordNumber last = next_ - RecordCount(1);
    for (std::size_t i = 0; i < ends.size(); ++i) {
      if (offset < ends[i]) return {last, name_of(i)};
    }
    return {last, {}};
  }

 private:
  void append_head() {
    if (has_head_) format_->begin(text_);
    has_head_ = false;
  }

  void append() {
    check_interruption();
    if (!source_.next(fields_)) {
      failure_ = source_.failure();
      return;
    }
    ++next_;
    for (std::size_t i = 0; i < fields_.size() && encodes(); ++i) {
      const std::string_view value = fields_[i];
      if (encode(fields_[i], encoded_[i])) continue;
      failure_ = "record " + std::to_string(next_.number()) + ", item " + name_of(i) + ": " +
                 bad_text(value);
      return;
    }
    format_->append(fields_, text_);
    append_end();
  }

  // As many records as are made together.
  void append_rows() {
    check_interruption();
    const std::size_t rows = source_.next_rows((range_.end - next_).number());
    if (rows == 0) {
      failure_ = source_.failure();
      return;
    }
    next_ += RecordCount(rows);
    const bool is_first = columns_.empty();
    columns_.resize(names_.size());
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (is_first) columns_[i].shape = source_.shape(i);
      columns_[i].texts = &source_.column(i);
    }
    format_->append_rows(columns_, rows, text_);
    append_end();
  }

  void append_end() {
    if (next_ == all_of(prepared_.layout().records).end) format_->end(text_);
  }

  std::string name_of(std::size_t item) const {
    return platform::printable(prepared_.written()[item].item->name);
  }

  // Whether values come in another encoding than the one that is written.
  bool encodes() const {
    return source_.encoding() == TextEncoding::code_page || choices_.in_code_page;
  }

  // Makes the value one in the encoding that is written, with `room` for it where it needs any.
  // False when it can't be.
  bool encode(std::string_view& value, std::string& room) {
    if (platform::is_ascii(value)) return true;
    if (source_.encoding() == TextEncoding::code_page) {
      if (!decoder_.decode(value, room)) return false;
      if (!choices_.in_code_page) value = room;
      return true;
    }
    auto text = exact_code_page_text(value);
    if (text) value = room = std::move(*text);
    return text.has_value();
  }

  std::string bad_text(std::string_view value) const {
    if (source_.encoding() == TextEncoding::utf8) {
      return platform::printable(value) +
             " has characters that code page 932 lacks, expected --encoding utf-8";
    }
    return platform::printable_from_code_page(value) +
           " has bytes without meaning in code page 932, expected characters";
  }

  PreparedLayout& prepared_;
  FormatChoices choices_;
  RecordSource source_;
  CodePageDecoder decoder_;
  std::vector<std::string> names_;
  std::unique_ptr<RecordFormat> format_;
  RecordRange range_;
  RecordNumber next_;
  bool has_head_ = false;
  RecordNumber piece_begin_;
  bool piece_has_head_ = false;
  std::vector<std::string_view> fields_;
  std::vector<RecordColumn> columns_;  // by rows
  std::vector<std::string> encoded_;   // room for values that are written otherwise
  std::string text_;
  std::string failure_;
};

}  // namespace

std::unique_ptr<RecordStream> export_stream(PreparedLayout& prepared,
                                            const FormatChoices& choices) {
  return std::make_unique<ExportStream>(prepared, choices);
}

}  // namespace korvex::host
