#pragma once

#include <cstdint>

#include "generate/element_generator.h"

namespace korvex {

// Letters and full-width characters: the counting part of the text is a number whose digits are
// characters, to which the increment is added.
//
// An element that is not the item's lead starts again by itself when it passes its own end.
class CharacterGenerator : public ElementGenerator {
 public:
  CharacterGenerator(const ItemContext& context, const ClFmtItemInf& element);

  StepOutcome produce(RecordLine& line, ItemPass& pass) override;
  void restart() override;

 private:
  void load(const FmtValRec& value);
  bool step_last_letter(std::int64_t change);
  void step_ordinal(std::int64_t change);
  bool passed_end() const;

  char base_letter_ = 0;  // 0 for full-width characters
  std::int64_t change_ = 0;

  std::int32_t ordinal_ = 0;
  std::size_t position_ = 0;
  char low_text_[value_text_size] = {};
  std::size_t low_size_ = 0;
  // The text ends in the counting part, and that spells the ordinal: its last letter may be changed
  // in place.
  bool text_matches_ = false;
};

}  // namespace korvex
