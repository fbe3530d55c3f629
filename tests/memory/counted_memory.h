#pragma once

#include <cstdint>

// This program's memory: every block is counted, and a chosen one is refused.
namespace korvex::test {

// Blocks that nobody has given back.
std::int64_t live_blocks();

// While it lives, the n-th block asked for from here on, counted from 1, is refused with
// std::bad_alloc, or with `for_good` that one and all later ones.
class FailingMemory {
 public:
  FailingMemory(std::int64_t n, bool for_good);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  // Whether a block has been refused.
  bool ran_out() const;
};

}  // namespace korvex::test
