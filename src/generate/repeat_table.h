#pragma once

#include <cstdint>
#include <vector>

namespace korvex {

// One repeated item in the table of nested counters, level order 1 outermost.
struct ClRepeatData {
  bool finished = false;  // completed its repetitions in the current cycle of the enclosing level
  std::int32_t level_order = 0;
  std::int32_t repeat_level = 0;
  std::int32_t repeat_count = 0;
  std::int32_t repetitions_done = 0;
  std::int32_t item_number = 0;
  bool innermost = false;
};

// The entries in ascending level order. Entries keep their addresses once the table is built.
using ClRepeatDataList = std::vector<ClRepeatData>;

}  // namespace korvex
