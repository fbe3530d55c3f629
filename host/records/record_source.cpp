#include "host/records/record_source.h"

namespace korvex::host {

RecordSource::RecordSource(PreparedLayout& prepared)
    : run_(prepared.run()), records_left_(prepared.layout().records) {
  run_.seek(0);
}

bool RecordSource::next(std::vector<std::string_view>& values) {
  if (records_left_ == 0 || code_ != 0) return false;
  --records_left_;
  code_ = run_.next(values);
  return code_ == 0;
}

}  // namespace korvex::host
