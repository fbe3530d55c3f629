#include "generate/number_generator.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "format/record_text.h"
#include "formatlang/number_text.h"
#include "generate/digit_pairs.h"

namespace korvex {

namespace {

constexpr std::int32_t max_width = static_cast<std::int32_t>(element_text_size) - 1;

// Whether both halves are what counting within 18 digits gives.
bool is_regular(std::int64_t high, std::int64_t low) {
  return high >= 0 && high < half_base && low >= 0 && low < half_base;
}

bool fits_32_bits(std::int64_t value) {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

// -1, 0 or 1 as the magnitude lies below, at or above the other.
int compare(std::int64_t high, std::int64_t low, const FmtValRec& other) {
  if (high != other.high) return high < other.high ? -1 : 1;
  if (low != other.low) return low < other.low ? -1 : 1;
  return 0;
}

}  // namespace

NumberGenerator::NumberGenerator(const ItemContext& context, const ClFmtItemInf& element)
    : ElementGenerator(context, element),
      digits_(std::clamp(settings_.digits, 0, max_number_digits)),
      decimals_(std::clamp(settings_.decimals, 0, max_number_digits)),
      width_(static_cast<std::size_t>(std::clamp(settings_.width, 0, max_width))),
      step_high_(context.increment.high),
      step_low_(context.increment.low) {
  fraction_only_ = context.layout_kind != layout_kind::record_file &&
                   context.item_digits == context.item_decimals;
  const bool is_signed = settings_.kind == format_kind::signed_number ||
                         settings_.kind == format_kind::signed_number_simple;
  writes_sign_ = is_signed;
  if (!is_signed) {
    direction_ = counts_up() ? Direction::grow : Direction::shrink;
  } else {
    switch (settings_.sign) {
      case number_sub_kind::plus_plus_up:
      case number_sub_kind::minus_minus_down:
        direction_ = Direction::grow;
        break;
      case number_sub_kind::plus_plus_down:
      case number_sub_kind::minus_minus_up:
        direction_ = Direction::shrink;
        break;
      default:
        direction_ = Direction::through_zero;
        turned_sign_ = settings_.sign == number_sub_kind::plus_minus_down ? sign_minus : sign_plus;
    }
  }
  if (is_regular(step_high_, step_low_) && step_high_ == 0) {
    const auto plain_digits = static_cast<std::int64_t>(width_) - (writes_sign_ ? 1 : 0);
    const std::int64_t run =
        decimals_ > 0 ? std::min<std::int64_t>(decimals_, plain_digits) : plain_digits;
    tail_base_ = run >= 4 ? 10'000 : run >= 2 ? 100 : run == 1 ? 10 : 0;
    if (step_low_ >= tail_base_) tail_base_ = 0;
  }
  load(settings_.current);
  note_text_state();
}

void NumberGenerator::load(const FmtValRec& value) {
  sign_ = value.sign;
  high_ = value.high;
  low_ = value.low;
}

// Whether the text may be changed in place from here on.
void NumberGenerator::note_text_state() {
  text_matches_ = false;
  if (tail_base_ == 0 || !is_regular(high_, low_)) return;
  const std::string rendered = number_text(
      high_, low_, {static_cast<std::int32_t>(width_), digits_, decimals_}, sign_character());
  text_matches_ = std::string_view(text_, length_) == rendered;
  tail_ = low_ % tail_base_;
}

void NumberGenerator::restart() {
  set_text(field_text(settings_.start_text));
  load(settings_.start);
  note_text_state();
}

StepOutcome NumberGenerator::produce(RecordLine& line, ItemPass&) {
  append_text(line);
  if (!step_tail()) {
    if (!step()) return StepOutcome::cut;
    render();
  }
  return is_lead_ && passed_end() ? StepOutcome::ended : StepOutcome::going;
}

void NumberGenerator::append_text(RecordLine& line) const {
  if (!fraction_only_) {
    line.append_block(text_, length_);
    return;
  }
  const std::string_view text(text_, length_);
  const auto point = text.rfind('.');
  if (point == std::string_view::npos) {
    line.append(text);
    return;
  }
  if (text.find('+') != std::string_view::npos) {
    line.append('+');
  } else if (text.find('-') != std::string_view::npos) {
    line.append('-');
  }
  line.append(text.substr(point));
}

// The step when it changes nothing but the tail; false, and nothing done, when it would change
// more.
bool NumberGenerator::step_tail() {
  if (!text_matches_) return false;
  const bool grows = direction_ == Direction::grow ||
                     (direction_ == Direction::through_zero && sign_ == turned_sign_);
  const std::int64_t next = grows ? tail_ + step_low_ : tail_ - step_low_;
  // Reaching zero may turn the sign, which the whole step decides.
  if (next >= tail_base_ || next < 0 || (next == 0 && direction_ == Direction::through_zero)) {
    return false;
  }
  low_ += next - tail_;
  tail_ = next;
  const auto value = static_cast<std::uint32_t>(next);
  char* end = text_ + length_;
  if (tail_base_ == 10'000) {
    write_four(end - 4, value);
  } else if (tail_base_ == 100) {
    write_pair(end - 2, value);
  } else {
    end[-1] = static_cast<char>('0' + value);
  }
  return true;
}

// False when the magnitude leaves its range.
bool NumberGenerator::step() {
  bool in_range = true;
  switch (direction_) {
    case Direction::grow:
      add();
      in_range = high_ < half_base;
      break;
    case Direction::shrink:
      in_range = subtract();
      break;
    case Direction::through_zero:
      if (sign_ == turned_sign_) {
        add();
        in_range = high_ < half_base;
      } else {
        subtract_through_zero();
      }
      break;
  }
  return in_range && fits_32_bits(high_) && fits_32_bits(low_);
}

void NumberGenerator::add() {
  low_ += step_low_;
  high_ += step_high_;
  if (low_ >= half_base) {
    ++high_;
    low_ -= half_base;
  }
}

bool NumberGenerator::subtract() {
  low_ -= step_low_;
  high_ -= step_high_;
  if (low_ >= 0) return true;
  if (high_ <= 0) return false;
  --high_;
  low_ += half_base;
  return true;
}

void NumberGenerator::subtract_through_zero() {
  low_ -= step_low_;
  high_ -= step_high_;
  if (high_ == 0 && low_ < 0) {
    sign_ = turned_sign_;
    low_ = -low_;
  } else if (high_ < 0 && low_ <= 0) {
    sign_ = turned_sign_;
    high_ = -high_;
    low_ = -low_;
  } else if (high_ < 0) {
    sign_ = turned_sign_;
    high_ = -high_ - 1;
    low_ = half_base - low_;
  } else if (low_ < 0) {
    --high_;
    low_ += half_base;
  }
  // Zero is plus, whichever side it was reached from.
  if (turned_sign_ == sign_plus && high_ == 0 && low_ == 0) sign_ = sign_plus;
}

char NumberGenerator::sign_character() const {
  if (!writes_sign_) return 0;
  switch (direction_) {
    case Direction::through_zero:
      return sign_ == sign_minus ? '-' : '+';
    default:
      return settings_.sign == number_sub_kind::minus_minus_down ||
                     settings_.sign == number_sub_kind::minus_minus_up
                 ? '-'
                 : '+';
  }
}

void NumberGenerator::render() {
  if (!is_regular(high_, low_) || width_ > max_number_digits) {
    set_text(number_text(high_, low_, {static_cast<std::int32_t>(width_), digits_, decimals_},
                         sign_character()));
  } else {
    // The last characters of the 18 digits, the point and the sign written over what they replace.
    char digits[max_number_digits];
    write_nine(digits, static_cast<std::uint32_t>(high_));
    write_nine(digits + half_digits, static_cast<std::uint32_t>(low_));
    char* out = text_ + width_;
    std::size_t left = width_;
    const char* from = digits + max_number_digits;
    if (decimals_ > 0 && left > 0) {
      const std::size_t count = std::min(static_cast<std::size_t>(decimals_), left);
      out -= count;
      from -= count;
      left -= count;
      std::memcpy(out, from, count);
      if (left > 0) *--out = '.', --left;
      if (digits_ == 0 && left > 0) *--out = '0', --left;
    }
    std::memcpy(out - left, from - left, left);
    if (const char sign = sign_character(); sign != 0 && width_ > 0) text_[0] = sign;
    length_ = width_;
  }
  text_matches_ = tail_base_ != 0 && is_regular(high_, low_);
  if (text_matches_) tail_ = low_ % tail_base_;
}

bool NumberGenerator::passed_end() const {
  const int order = compare(high_, low_, settings_.end);
  if (!writes_sign_) return counts_up() ? order > 0 : counts_down() && order < 0;
  switch (direction_) {
    case Direction::grow:
      return order > 0;
    case Direction::shrink:
      return order < 0;
    case Direction::through_zero:
      return sign_ == turned_sign_ && order > 0;
  }
  return false;
}

}  // namespace korvex
