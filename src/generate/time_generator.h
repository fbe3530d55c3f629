#pragma once

#include <cstdint>

#include "generate/date_generator.h"

namespace korvex {

// What clocks have in common: runs turn minute and second.
class ClockGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 protected:
  const Wheel* wheel() const override;
  int place_of(int minute, int second) const override;
  void set_place(int place) override;
};

// Seconds of a day, which wrap at midnight.
class TimeGenerator : public ClockGenerator {
 public:
  using ClockGenerator::ClockGenerator;

 private:
  bool change_fields() override;
};

// Seconds on the calendar.
class TimestampGenerator : public ClockGenerator {
 public:
  using ClockGenerator::ClockGenerator;

 private:
  bool change_fields() override;
  const Wheel* wheel() const override;
  bool stays_in_places() const override;
  bool step_past_last(std::int64_t second);
};

}  // namespace korvex
