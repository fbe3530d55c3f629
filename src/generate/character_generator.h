#pragma once

#include <cstdint>

#include "generate/element_generator.h"

namespace korvex {

// Letters and full-width characters: the counting part of the text is a number whose digits are
// characters, to which the increment is added. Runs turn the last one or two letters, or
// the last full-width character.
//
// An element that is not the item's lead starts again by itself when it passes its own end.
class CharacterGenerator : public ElementGenerator {
 public:
  CharacterGenerator(const ItemContext& context, const ClFmtItemInf& element);

  void restart() override;
  bool keeps_size() const override;
  bool never_cuts() const override { return true; }

 private:
  StepOutcome step(ItemPass& pass) override;
  void load(const FmtValRec& value);
  void plan_run();
  void write_ordinal();
  std::int32_t ordinal_of_text() const;
  bool passed_end() const;

  char base_letter_ = 0;  // 0 for full-width characters
  std::int64_t change_ = 0;

  std::int32_t ordinal_ = 0;
  std::size_t position_ = 0;
  char low_text_[value_text_size] = {};
  std::size_t low_size_ = 0;
};

}  // namespace korvex
