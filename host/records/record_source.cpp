#include "host/records/record_source.h"

#include <algorithm>

#include "host/layout/failure_text.h"
#include "host/process/signals.h"
#include "host/records/engine_source.h"
#include "platform/printable_text.h"

namespace korvex::host {

using sources::TextBlock;

RecordSource::RecordSource(PreparedLayout& prepared)
    : prepared_(prepared), end_(all_of(prepared.layout().records).end) {
  if (!prepared.is_plain()) {
    for (const PreparedItem& item : prepared.written()) {
      rules_.emplace_back();
      if (is_checked_before(*item.item, item.column)) continue;
      ValueRule rule(*item.item, prepared.layout());
      if (!rule.fits(field(rules_.size() - 1).shape())) rules_.back() = std::move(rule);
    }
  }
  seek({});
}

void RecordSource::seek(RecordNumber record) {
  next_ = std::min(record, end_);
  failure_.clear();
  rows_ = 0;
  tried_rows_ = 1;
  if (!prepared_.is_plain()) return;
  prepared_.run().seek(next_.number());
  check_interruption();
}

bool RecordSource::next(std::vector<std::string_view>& values) {
  if (next_ == end_ || !failure_.empty()) return false;
  if (!prepared_.is_plain()) return next_of_fields(values);
  ++next_;
  const ErrorCode code = prepared_.run().next(values);
  if (code != error::none) failure_ = numbered_message(code, prepared_.layout());
  return code == error::none;
}

bool RecordSource::next_of_fields(std::vector<std::string_view>& values) {
  if (next_ - first_row_ >= RecordCount(rows_) && make_rows(TextBlock::most_texts) == 0)
    return false;
  const std::size_t row = (next_ - first_row_).number();
  values.resize(rules_.size());
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = column(i)[row];
  ++next_;
  return true;
}

std::size_t RecordSource::next_rows(std::uint64_t most) {
  const std::size_t rows = make_rows(most);
  next_ += RecordCount(rows);
  return rows;
}

// Beginning with one row, since whoever looks at a few does not wait for many; and again with one
// where a value of the first row stands in the way of all.
std::size_t RecordSource::make_rows(std::uint64_t most) {
  first_row_ = next_;
  rows_ = 0;
  while (rows_ == 0 && next_ != end_ && failure_.empty()) {
    const auto tried = static_cast<std::size_t>(
        std::min({std::uint64_t{tried_rows_}, most, (end_ - next_).number()}));
    for (std::size_t i = 0; i < rules_.size(); ++i) field(i).expect(next_.number(), tried);
    rows_ = tried;
    for (std::size_t i = 0; i < rules_.size(); ++i) rows_ = fitting_rows(i, rows_);
    if (rows_ == 0 && tried == 1) tell_failure();
    tried_rows_ = rows_ < tried ? std::max<std::size_t>(rows_, 1)
                                : std::min(2 * tried_rows_, TextBlock::most_texts);
  }
  return rows_;
}

// So many of the first rows have a value of the item that can be made, and that may stand there.
std::size_t RecordSource::fitting_rows(std::size_t item, std::size_t rows) const {
  const TextBlock& texts = column(item);
  rows = std::min(rows, texts.size());
  if (!rules_[item]) return rows;
  std::size_t row = 0;
  while (row < rows && !rules_[item]->fault(texts[row])) ++row;
  return row;
}

// Of the next record: the first of its items whose value cannot be made or is wrong.
void RecordSource::tell_failure() {
  std::size_t i = 0;
  try {
    for (; i < rules_.size(); ++i) {
      const std::string_view text = field(i).text_or_empty(next_.number());
      const auto fault = rules_[i] ? rules_[i]->fault(text) : std::nullopt;
      if (fault) throw BadValue("the value " + *fault);
    }
  } catch (const BadValue& bad) {
    failure_ = "record " + std::to_string(next_.number() + 1) + ", item " +
               platform::printable(prepared_.written()[i].item->name) + ": " + bad.what();
  }
}

ReadableRecords::ReadableRecords(PreparedLayout& prepared, std::vector<MomentForm> forms)
    : source_(prepared), forms_(std::move(forms)), texts_(forms_.size()), moments_(forms_.size()) {}

bool ReadableRecords::next(std::vector<std::string_view>& values) {
  if (!source_.next(made_)) return false;
  const bool is_utf8 = source_.encoding() == TextEncoding::utf8;
  unreadable_.reset();
  values.clear();
  for (std::size_t i = 0; i < made_.size(); ++i) {
    std::string_view text = made_[i];
    if (!is_utf8) {
      if (!decoder_.decode(made_[i], texts_[i]) && !unreadable_) unreadable_ = {i, made_[i]};
      text = texts_[i];
    }
    values.push_back(moments_[i].convert(forms_[i], text));
  }
  return true;
}

}  // namespace korvex::host
