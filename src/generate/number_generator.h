#pragma once

#include <cstdint>

#include "generate/element_generator.h"

namespace korvex {

// Numbers: a sign and a magnitude of two nine-digit halves, stepped by the increment's halves. Runs
// turn the last digits.
class NumberGenerator : public ElementGenerator {
 public:
  NumberGenerator(const ItemContext& context, const ClFmtItemInf& element);

  void restart() override;
  bool keeps_size() const override;
  bool never_cuts() const override;

 private:
  enum class Direction : std::uint8_t { grow, shrink, through_zero };

  StepOutcome step(ItemPass& pass) override;
  void load(const FmtValRec& value);
  void plan_run();
  bool grows() const;
  bool is_end_tested() const;
  std::int64_t steps_to_end() const;
  bool change_magnitude();
  void add();
  bool subtract();
  void subtract_through_zero();
  void render();
  void show(std::string_view text);
  void start_with(std::string_view text);
  char sign_character() const;
  bool passed_end() const;

  Direction direction_ = Direction::grow;
  std::int32_t turned_sign_ = 0;  // through_zero: the sign behind zero
  bool writes_sign_ = false;
  bool fraction_only_ = false;  // a column with nothing but decimals drops what stands before them
  std::int32_t digits_ = 0;
  std::int32_t decimals_ = 0;
  std::size_t width_ = 0;
  std::int64_t step_high_ = 0;
  std::int64_t step_low_ = 0;

  // What the text ends in, if it can end in a wheel's entry: digits, or the point and a digit.
  Wheel wheel_;

  std::int32_t sign_ = 0;
  std::int64_t high_ = 0;
  std::int64_t low_ = 0;
};

}  // namespace korvex
