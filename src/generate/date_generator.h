#pragma once

#include <cstdint>

#include "generate/element_generator.h"
#include "generate/moment_text.h"

namespace korvex {

// What dates, times and timestamps have in common: the value in its fields, shown in the target's
// layout, and an end test on the plain text of the next value. Runs turn the last two fields: month
// and day, or minute and second.
//
// Times are computed on the proleptic Gregorian calendar without a time zone, so that the same
// settings give the same bytes everywhere.
class MomentGenerator : public ElementGenerator {
 public:
  MomentGenerator(const ItemContext& context, const ClFmtItemInf& element);

  void restart() override;
  bool keeps_size() const override;
  bool never_cuts() const override { return !is_lead_ || !heeds_overflow_; }

 protected:
  // Takes the next value into fields_. False when the calendar ended and the element restarted.
  virtual bool change_fields() = 0;

  // The wheel on which the value stands while nothing above its last two fields changes; null when
  // steps need a closer look.
  virtual const Wheel* wheel() const = 0;

  // Where two fields stand on that wheel, -1 for nowhere, and back.
  virtual int place_of(int high, int low) const = 0;
  virtual void set_place(int place) = 0;

  // Whether no step leads to fields that outgrow their places.
  virtual bool stays_in_places() const { return true; }

  // Restarts for a step across the calendar's ends; always false, as change_fields() answers then.
  bool overflow();

  // The step with its direction, in days or seconds.
  std::int64_t change() const { return change_; }

  MomentFields fields_;
  const MomentLayout layout_;
  const MomentRange range_;

 private:
  StepOutcome step(ItemPass& pass) final;
  void show();
  void plan_run();
  int place() const;
  std::int64_t steps_to_end(int place) const;

  const std::int64_t change_;
  const bool heeds_overflow_;  // the item's overflow flag ends the cycle of this lead element
  const bool watches_others_;  // the flag may have been raised by an element before this one
  std::int64_t key_ = -1;
};

// Days on the calendar.
class DateGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool change_fields() override;
  const Wheel* wheel() const override;
  int place_of(int month, int day) const override;
  void set_place(int place) override;
  bool step_past_last(std::int64_t day);
};

// Days without a calendar: every month has 31, and only one month is carried a step.
class UncheckedDateGenerator : public MomentGenerator {
 public:
  using MomentGenerator::MomentGenerator;

 private:
  bool change_fields() override;
  const Wheel* wheel() const override;
  int place_of(int month, int day) const override;
  void set_place(int place) override;
  bool stays_in_places() const override;
};

}  // namespace korvex
