#include "generate/character_generator.h"

#include <algorithm>
#include <cstring>

#include "format/record_text.h"
#include "formatlang/full_width_table.h"
#include "formatlang/ordinals.h"

namespace korvex {

namespace {

constexpr int letter_count = 26;

}  // namespace

CharacterGenerator::CharacterGenerator(const ItemContext& context, const ClFmtItemInf& element)
    : ElementGenerator(context, element),
      change_(counts_up() ? std::int64_t{context.increment.low}
                          : -std::int64_t{context.increment.low}) {
  if (settings_.kind == format_kind::upper_letters) base_letter_ = 'A';
  if (settings_.kind == format_kind::lower_letters) base_letter_ = 'a';
  load(settings_.current);
}

void CharacterGenerator::load(const FmtValRec& value) {
  ordinal_ = value.low;
  const std::string_view low_text = field_text(value.low_text);
  low_size_ = low_text.size();
  std::memcpy(low_text_, low_text.data(), low_size_);
  const auto last_place = static_cast<std::int32_t>(element_text_size - value_text_size);
  position_ = static_cast<std::size_t>(std::clamp(value.position, 0, last_place));
  const std::string_view counting(low_text_, low_size_);
  text_matches_ = base_letter_ != 0 && low_size_ > 0 && length_ == position_ + low_size_ &&
                  std::string_view(text_ + position_, low_size_) == counting &&
                  letters_to_ordinal(base_letter_, counting) == ordinal_ &&
                  std::all_of(counting.begin(), counting.end(), [this](char letter) {
                    return letter >= base_letter_ && letter < base_letter_ + letter_count;
                  });
}

void CharacterGenerator::restart() {
  set_text(field_text(settings_.start_text));
  load(settings_.start);
}

StepOutcome CharacterGenerator::produce(RecordLine& line, ItemPass&) {
  line.append_block(text_, length_);
  if (!step_last_letter(change_)) step_ordinal(change_);
  if (!passed_end()) return StepOutcome::going;
  if (is_lead_) return StepOutcome::ended;
  restart();
  return StepOutcome::going;
}

bool CharacterGenerator::step_last_letter(std::int64_t change) {
  if (!text_matches_) return false;
  char& last = text_[length_ - 1];
  const std::int64_t next = last + change;
  if (next < base_letter_ || next >= base_letter_ + letter_count) return false;
  last = static_cast<char>(next);
  low_text_[low_size_ - 1] = last;
  ordinal_ += static_cast<std::int32_t>(change);
  return true;
}

void CharacterGenerator::step_ordinal(std::int64_t change) {
  const std::int64_t next = ordinal_ + change;
  ordinal_ = static_cast<std::int32_t>(next);
  if (base_letter_ != 0) {
    ordinal_to_letters(base_letter_, ordinal_, low_text_, low_size_);
  } else {
    ordinal_to_full_width(ordinal_, low_text_, low_size_);
  }
  // The counting part replaces the rest of the text; a place behind its end changes nothing.
  if (position_ <= length_) {
    std::memcpy(text_ + position_, low_text_, low_size_);
    length_ = position_ + low_size_;
  }
  text_matches_ = base_letter_ != 0 && low_size_ > 0 && length_ == position_ + low_size_ &&
                  next == ordinal_ &&
                  letters_to_ordinal(base_letter_, {low_text_, low_size_}) == ordinal_;
}

bool CharacterGenerator::passed_end() const {
  return counts_up() ? ordinal_ > settings_.end.low : counts_down() && ordinal_ < settings_.end.low;
}

}  // namespace korvex
