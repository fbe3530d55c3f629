#pragma once

#include <cstdint>

#include "platform/user_interface.h"

namespace korvex {

// The number of records that counts as all of them for the percentage: guarded runs with repeats
// leave a margin for what the repeats add.
std::int64_t percentage_denominator(std::int64_t records, bool leaves_margin);

// Shows the percentage of a run whenever it rises. It computes only where the next percent
// can begin.
class ProgressMeter {
 public:
  ProgressMeter(platform::ProgressSink& sink, std::int64_t denominator);

  void update(std::int64_t done) {
    if (done >= next_) show(done);
  }

  // How many records after `done` may pass before it must be asked again; at least 1.
  std::int64_t records_to_update(std::int64_t done) const {
    return next_ > done ? next_ - done : 1;
  }

  // The run is complete: 100 is shown unless it stands already.
  void finish(std::int64_t done);

 private:
  int percentage(std::int64_t done) const;
  void show(std::int64_t done);

  platform::ProgressSink& sink_;
  std::int64_t denominator_;
  int shown_ = 0;
  std::int64_t next_ = 0;
};

}  // namespace korvex
