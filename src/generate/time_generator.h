#pragma once

#include <cstdint>

#include "generate/date_generator.h"

namespace korvex {

// Seconds of a day, which wrap at midnight.
class TimeGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool change_fields() override;
  RunLimits run_limits() const override;
};

// Seconds on the calendar.
class TimestampGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool change_fields() override;
  RunLimits run_limits() const override;
  bool stays_in_places() const override;
  bool step_past_last(std::int64_t second);
};

}  // namespace korvex
