#pragma once

#include <cstdint>

#include "generate/date_generator.h"

namespace korvex {

// Seconds of a day, which wrap at midnight.
class TimeGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool step() override;
};

// Seconds on the calendar.
class TimestampGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool step() override;
  bool heeds_overflow() const override { return true; }
  bool step_past_last(std::int64_t second);
  bool step_past_first();
};

}  // namespace korvex
