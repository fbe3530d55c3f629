#include "host/parts/fault_lines.h"

#include <ostream>

#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

void FaultLines::add(std::uint64_t first, std::uint64_t last, const std::string& fault) {
  count_ += last - first + 1;
  if (fault == fault_ && first == waiting_.last + 1) {
    waiting_.last = last;
    return;
  }
  flush();
  waiting_ = {first, last};
  fault_ = fault;
}

void FaultLines::flush() {
  if (fault_.empty()) return;
  const auto path = [&](std::uint64_t number) {
    return platform::printable(part_path(whole_, {number, parts_}));
  };
  messages_ << path(waiting_.first);
  if (waiting_.last > waiting_.first) {
    messages_ << " to " << platform::base_name(path(waiting_.last));
  }
  messages_ << ": " << fault_ << std::endl;
  rows_.insert(waiting_);
  fault_.clear();
}

bool FaultLines::is_faulty(std::uint64_t number) const {
  const auto row = rows_.lower_bound({number, number});
  return row != rows_.end() && row->first <= number;
}

}  // namespace korvex::host
