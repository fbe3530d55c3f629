#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "host/records/prepared_layout.h"

namespace korvex::host {

// The records of a layout, one after the other, with the values that generating would give. Fields
// are told apart where they are made, so that a value may hold commas and quotation marks. Needs
// memory for one record.
class RecordSource {
 public:
  // Takes the records of the layout from its first one on; the layout must outlive this object.
  explicit RecordSource(PreparedLayout& prepared);

  // The values of the next record, without quotation marks, in code page 932; they stand until the
  // next call. False at the end, and after a failure, whose code `code()` then answers.
  bool next(std::vector<std::string_view>& values);

  std::int32_t code() const { return code_; }

 private:
  Run& run_;
  std::int32_t records_left_ = 0;
  std::int32_t code_ = 0;
};

}  // namespace korvex::host
