#pragma once

#include <cstdint>

#include "generate/element_generator.h"
#include "generate/moment_text.h"

namespace korvex {

// What dates, times and timestamps have in common: the value in its fields, shown in the target's
// layout, and an end test on the plain text of the next value.
//
// Times are computed on the proleptic Gregorian calendar without a time zone, so that the same
// settings give the same bytes everywhere.
class MomentGenerator : public ElementGenerator {
 public:
  MomentGenerator(const ItemContext& context, const ClFmtItemInf& element);

  StepOutcome produce(RecordLine& line, ItemPass& pass) final;
  void restart() override;

 protected:
  // Takes the next value into fields_. False when the calendar ended and the element restarted.
  virtual bool step() = 0;

  // Whether the item's overflow flag ends the cycle of this kind of lead element.
  virtual bool heeds_overflow() const { return false; }

  // Restarts for a step across the calendar's ends; always false, as step() answers then.
  bool overflow();

  std::int64_t step_size() const { return step_size_; }

  MomentFields fields_;
  const MomentLayout layout_;
  const MomentRange range_;

 private:
  std::int64_t step_size_;
  bool restarted_ = false;
};

// Days on the calendar.
class DateGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool step() override;
  bool heeds_overflow() const override { return true; }
  bool step_past_boundary(std::int64_t day);
};

// Days without a calendar: every month has 31, and only one month is carried a step.
class UncheckedDateGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool step() override;
};

}  // namespace korvex
