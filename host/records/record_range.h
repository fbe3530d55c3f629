#pragma once

#include "courses/steps.h"

namespace korvex::host {

// Some of the records of a layout, counted from 0: from the first up to the one before the end.
struct RecordRange {
  Steps first = 0;
  Steps end = 0;

  Steps size() const { return end - first; }
  bool operator==(const RecordRange&) const = default;
};

}  // namespace korvex::host
