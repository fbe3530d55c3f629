#pragma once

#include <optional>
#include <vector>

#include "host/records/field_timeline.h"
#include "host/records/prepared_layout.h"

namespace korvex::host {

// How the records of a layout go, field by field, without generating one.
class LayoutTimeline {
 public:
  explicit LayoutTimeline(PreparedLayout& prepared);

  // In the order of the layout's items. Addresses stay.
  const std::vector<FieldTimeline>& fields() const { return fields_; }

  // The repeated ones in ascending level order.
  const std::vector<FieldTimeline*>& repeats() const { return repeats_; }

  // The exact size of the data file; nothing where it can't be told.
  std::optional<std::uint64_t> file_size() const;

 private:
  std::uint64_t records_ = 0;
  std::uint64_t line_end_bytes_ = 0;
  std::vector<FieldTimeline> fields_;
  std::vector<FieldTimeline*> repeats_;
};

}  // namespace korvex::host
