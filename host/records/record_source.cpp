#include "host/records/record_source.h"

#include <algorithm>

#include "host/layout/failure_text.h"
#include "host/process/signals.h"
#include "host/records/engine_source.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// The engine's values are right by themselves, and those of rows were read as a whole.
bool is_checked_before(const PreparedItem& prepared) {
  if (prepared.column != nullptr) return true;
  const OwnValues& own = prepared.item->values->own;
  return std::holds_alternative<ListValues>(own) || std::holds_alternative<BuiltinValues>(own);
}

}  // namespace

RecordSource::RecordSource(PreparedLayout& prepared)
    : prepared_(prepared), end_(prepared.layout().records.number()) {
  if (!prepared.is_plain()) {
    for (const PreparedItem& item : prepared.items()) {
      rules_.emplace_back();
      if (!is_checked_before(item)) rules_.back().emplace(*item.item, prepared.layout());
    }
  }
  seek(0);
}

void RecordSource::seek(std::uint64_t record) {
  next_ = std::min(record, end_);
  failure_.clear();
  if (!prepared_.is_plain()) return;
  prepared_.run().seek(next_);
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
  const auto& fields = prepared_.fields();
  values.resize(fields.size());
  std::size_t i = 0;
  try {
    for (; i < values.size(); ++i) {
      values[i] = fields[i]->text_or_empty(next_);
      if (!rules_[i]) continue;
      if (const auto fault = rules_[i]->fault(values[i])) throw BadValue("the value " + *fault);
    }
  } catch (const BadValue& bad) {
    failure_ = "record " + std::to_string(next_ + 1) + ", item " +
               platform::printable(prepared_.items()[i].item->name) + ": " + bad.what();
    return false;
  }
  ++next_;
  return true;
}

}  // namespace korvex::host
