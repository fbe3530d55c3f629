#pragma once

#include <cstdint>
#include <memory>

#include "host/parts/output_form.h"
#include "host/parts/part.h"

namespace korvex::host {

// What is to be expected of the records of a layout before they are made.
class PartEstimate {
 public:
  // Makes some of the records, spread over all, to measure them.
  PartEstimate(PreparedLayout& prepared, const OutputForm& form);

  RecordCount records() const { return records_; }

  // Of all records; whether that is more than an estimate.
  ByteCount bytes() const { return bytes_; }
  bool is_exact() const { return is_exact_; }

  // The size of the largest of so many parts: rounded up where it is an estimate.
  ByteCount largest_part(std::uint64_t parts) const;

  // The time that one part takes, without what writing to a disk takes.
  double seconds(std::uint64_t parts) const;

  // The fewest parts that are no larger than this; more than `most` when so many don't do.
  std::uint64_t parts_below(std::uint64_t bytes, std::uint64_t most) const;

 private:
  ByteCount size_before(RecordNumber record) const;

  std::unique_ptr<RecordStream> stream_;
  RecordCount records_;
  ByteCount bytes_ = 0;
  bool is_exact_ = false;
  double seconds_ = 0;
};

}  // namespace korvex::host
