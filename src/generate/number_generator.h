#pragma once

#include <cstdint>

#include "generate/element_generator.h"

namespace korvex {

// Numbers: a sign and a magnitude of two nine-digit halves, stepped by the increment's halves.
//
// A step that changes only the last digits rewrites just these in the text; everything else, and
// every state that no checked settings produce, goes through the whole text.
class NumberGenerator : public ElementGenerator {
 public:
  NumberGenerator(const ItemContext& context, const ClFmtItemInf& element);

  StepOutcome produce(RecordLine& line, ItemPass& pass) override;
  void restart() override;

 private:
  enum class Direction : std::uint8_t { grow, shrink, through_zero };

  void append_text(RecordLine& line) const;
  void load(const FmtValRec& value);
  void note_text_state();
  bool step();
  bool step_tail();
  void add();
  bool subtract();
  void subtract_through_zero();
  void render();
  char sign_character() const;
  bool passed_end() const;

  Direction direction_ = Direction::grow;
  std::int32_t turned_sign_ = 0;  // through_zero: the sign behind zero
  bool writes_sign_ = false;
  bool fraction_only_ = false;  // a column with nothing but decimals drops its leading zero
  std::int32_t digits_ = 0;
  std::int32_t decimals_ = 0;
  std::size_t width_ = 0;
  std::int64_t step_high_ = 0;
  std::int64_t step_low_ = 0;

  std::int32_t sign_ = 0;
  std::int64_t high_ = 0;
  std::int64_t low_ = 0;

  // The last digits of the magnitude, which stand at the end of the text.
  std::int64_t tail_base_ = 0;  // 10, 100 or 10000; 0 when the text must always be rewritten
  std::int64_t tail_ = 0;
  bool text_matches_ = false;  // the text is what rendering the value gives
};

}  // namespace korvex
