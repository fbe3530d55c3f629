#include "generate/character_generator.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "format/record_text.h"
#include "formatlang/full_width_table.h"
#include "formatlang/ordinals.h"

namespace korvex {

namespace {

constexpr int letter_count = 26;

// "A" to "Z" or "a" to "z".
constexpr auto letters_from(char base) {
  std::array<char, letter_count> letters = {};
  for (std::size_t i = 0; i < letters.size(); ++i) {
    letters[i] = static_cast<char>(base + static_cast<int>(i));
  }
  return letters;
}

// "AA" to "ZZ" or "aa" to "zz".
constexpr auto letter_pairs(char base) {
  std::array<char, 2 * letter_count* letter_count> pairs = {};
  for (std::size_t i = 0; i < pairs.size() / 2; ++i) {
    pairs[2 * i] = static_cast<char>(base + static_cast<int>(i / letter_count));
    pairs[2 * i + 1] = static_cast<char>(base + static_cast<int>(i % letter_count));
  }
  return pairs;
}

constexpr auto upper_letters = letters_from('A');
constexpr auto lower_letters = letters_from('a');
constexpr auto upper_pairs = letter_pairs('A');
constexpr auto lower_pairs = letter_pairs('a');

// The bytes of every full-width character in counting order.
const char* full_width_pairs() {
  static const auto pairs = [] {
    std::array<char, 2 * full_width_count> bytes = {};
    for (std::int32_t i = 0; i < full_width_count; ++i) {
      bytes[2 * static_cast<std::size_t>(i)] = static_cast<char>(full_width_code(i) >> 8);
      bytes[2 * static_cast<std::size_t>(i) + 1] = static_cast<char>(full_width_code(i) & 0xFF);
    }
    return bytes;
  }();
  return pairs.data();
}

Wheel letter_wheel(char base, std::size_t counting_letters) {
  if (counting_letters == 1) {
    return {base == 'A' ? upper_letters.data() : lower_letters.data(), 1, letter_count};
  }
  return {base == 'A' ? upper_pairs.data() : lower_pairs.data(), 2, letter_count * letter_count};
}

}  // namespace

CharacterGenerator::CharacterGenerator(const ItemContext& context, const ClFmtItemInf& element)
    : ElementGenerator(context, element),
      change_(counts_up() ? std::int64_t{context.increment.low}
                          : -std::int64_t{context.increment.low}) {
  if (settings_.kind == format_kind::upper_letters) base_letter_ = 'A';
  if (settings_.kind == format_kind::lower_letters) base_letter_ = 'a';
  load(settings_.current);
  plan_run();
}

void CharacterGenerator::load(const FmtValRec& value) {
  ordinal_ = value.low;
  const std::string_view low_text = field_text(value.low_text);
  low_size_ = low_text.size();
  std::memcpy(low_text_, low_text.data(), low_size_);
  constexpr auto last_place = static_cast<std::int32_t>(element_text_size - value_text_size);
  position_ = static_cast<std::size_t>(std::clamp(value.position, 0, last_place));
}

void CharacterGenerator::restart() {
  end_run();
  set_text(field_text(settings_.start_text));
  load(settings_.start);
  plan_run();
}

std::int32_t CharacterGenerator::ordinal_of_text() const {
  const std::string_view counting(text_ + position_, low_size_);
  return base_letter_ != 0 ? letters_to_ordinal(base_letter_, counting)
                           : full_width_to_ordinal(counting);
}

// A run needs a text that ends in the counting part and spells the ordinal.
void CharacterGenerator::plan_run() {
  if (low_size_ == 0 || length_ != position_ + low_size_ || ordinal_ < 0) return;
  if (base_letter_ == 0 && low_size_ % 2 != 0) return;
  if (std::memcmp(text_ + position_, low_text_, low_size_) != 0) return;
  const Wheel wheel = base_letter_ != 0 ? letter_wheel(base_letter_, low_size_)
                                        : Wheel{full_width_pairs(), 2, full_width_count};
  const std::int64_t place = ordinal_ % wheel.count;
  const char* entry = wheel.entries + wheel.entry_size * static_cast<std::size_t>(place);
  const char* tail = text_ + length_ - wheel.entry_size;
  if (std::memcmp(tail, entry, wheel.entry_size) != 0 || ordinal_of_text() != ordinal_) return;
  const std::int64_t to_end = std::int64_t{settings_.end.low} - ordinal_;
  if (change_ > 0) {
    const std::int64_t steps = counts_up() ? to_end / change_ : 0;
    begin_run(wheel, place, change_, std::min((wheel.count - 1 - place) / change_, steps));
  } else if (change_ < 0) {
    const std::int64_t steps = counts_down() ? to_end / change_ : 0;
    begin_run(wheel, place, change_, std::min(place / -change_, steps));
  }
}

bool CharacterGenerator::keeps_size() const {
  return length_ == position_ + low_size_ && field_text(settings_.start_text).size() == length_ &&
         settings_.start.position == settings_.current.position &&
         field_text(settings_.start.low_text).size() == low_size_;
}

StepOutcome CharacterGenerator::step(ItemPass&) {
  const std::int64_t taken = end_run();
  if (taken > 0) {
    ordinal_ += static_cast<std::int32_t>(taken * change_);
    std::memcpy(low_text_, text_ + position_, low_size_);
  }
  ordinal_ = static_cast<std::int32_t>(ordinal_ + change_);
  write_ordinal();
  if (passed_end()) {
    if (is_lead_) return StepOutcome::ended;
    restart();
    return StepOutcome::going;
  }
  plan_run();
  return StepOutcome::going;
}

// The counting part takes the place of the rest of the text; a place behind its end changes
// nothing.
void CharacterGenerator::write_ordinal() {
  if (base_letter_ != 0) {
    ordinal_to_letters(base_letter_, ordinal_, low_text_, low_size_);
  } else {
    ordinal_to_full_width(ordinal_, low_text_, low_size_);
  }
  if (position_ > length_) return;
  std::memcpy(text_ + position_, low_text_, low_size_);
  length_ = position_ + low_size_;
}

bool CharacterGenerator::passed_end() const {
  return counts_up() ? ordinal_ > settings_.end.low : counts_down() && ordinal_ < settings_.end.low;
}

}  // namespace korvex
