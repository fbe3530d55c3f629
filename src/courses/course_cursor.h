#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "courses/course.h"
#include "courses/line_block.h"

namespace korvex {

// The present step of one element: its text, and the run that it is in. Steps inside a run change
// the end of the text; the course is asked for a text only when a run ends.
//
// Keeps a reference to the course, which must outlive it.
class CourseCursor {
 public:
  explicit CourseCursor(const Course& course) : course_(&course), size_(course.facts().size) {
    seek(0);
  }

  // Goes to a step before the course's end.
  void seek(Steps step) {
    const Steps restart = course_->facts().restart;
    if (step >= restart) step %= restart;
    course_->write(step, text_);
    const WheelRun run = course_->run(step);
    constexpr Steps most = std::numeric_limits<std::int64_t>::max();
    run_left_ = static_cast<std::int64_t>(std::min({run.steps, restart - 1 - step, most}));
    const auto entry_size = static_cast<std::ptrdiff_t>(run.wheel.entry_size);
    tail_size_ = run.wheel.entry_size;
    wheel_place_ = run.wheel.entries + run.place * entry_size;
    wheel_step_ = run.change * entry_size;
  }

  // Takes the step after which the item is at `step`.
  void advance(Steps step) {
    if (run_left_ == 0) {
      seek(step);
    } else {
      skip(1);
    }
  }

  // Takes `steps` steps of the run at once.
  void skip(std::int64_t steps) {
    run_left_ -= steps;
    wheel_place_ += steps * wheel_step_;
    char* const tail = text_ + size_ - tail_size_;
    if (tail_size_ == pair_entry) {
      std::memcpy(tail, wheel_place_, pair_entry);
    } else if (tail_size_ > 0) {
      std::memcpy(tail, wheel_place_, tail_size_);
    }
  }

  // Writes the text at `out`, where there must be room for Course::max_text_size bytes; answers its
  // end.
  char* write(char* out) const {
    if (size_ <= LineBlock::chunk_size) {
      std::memcpy(out, text_, LineBlock::chunk_size);
    } else {
      std::memcpy(out, text_, size_);
    }
    return out + size_;
  }

  std::string_view text() const { return {text_, size_}; }

  // What is left of the run: how many steps, where the wheel is, how far it turns each time and
  // how many characters it turns; none for a text that stays as it is.
  std::int64_t run_left() const { return run_left_; }
  const char* wheel_place() const { return wheel_place_; }
  std::ptrdiff_t wheel_step() const { return wheel_step_; }
  std::size_t tail_size() const { return tail_size_; }

 private:
  const Course* course_;
  std::size_t size_;
  std::int64_t run_left_ = 0;
  const char* wheel_place_ = nullptr;
  std::ptrdiff_t wheel_step_ = 0;
  std::size_t tail_size_ = 0;
  // Longer than any element's field, so that chunk copies stay inside.
  char text_[Course::max_text_size] = {};
};

}  // namespace korvex
