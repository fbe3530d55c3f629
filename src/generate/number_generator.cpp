#include "generate/number_generator.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "format/record_text.h"
#include "formatlang/number_text.h"
#include "generate/digit_pairs.h"

namespace korvex {

namespace {

constexpr std::int32_t max_width = static_cast<std::int32_t>(element_text_size) - 1;

// "0000" to "9999".
constexpr auto four_digit_texts = [] {
  std::array<char, two_pairs_entry* 10'000> texts = {};
  for (std::size_t i = 0; i < texts.size() / two_pairs_entry; ++i) {
    for (std::size_t k = 0; k < 2; ++k) {
      texts[two_pairs_entry * i + k] = digit_pairs[i / 100 * 2 + k];
      texts[two_pairs_entry * i + 2 + k] = digit_pairs[i % 100 * 2 + k];
    }
  }
  return texts;
}();

// "0.00" to "9.99".
constexpr auto two_decimal_texts = [] {
  std::array<char, two_pairs_entry* 1'000> texts = {};
  for (std::size_t i = 0; i < texts.size() / two_pairs_entry; ++i) {
    texts[two_pairs_entry * i] = static_cast<char>('0' + i / 100);
    texts[two_pairs_entry * i + 1] = '.';
    for (std::size_t k = 0; k < 2; ++k) {
      texts[two_pairs_entry * i + 2 + k] = digit_pairs[i % 100 * 2 + k];
    }
  }
  return texts;
}();

constexpr Wheel four_digit_wheel = {four_digit_texts.data(), two_pairs_entry, 10'000};
constexpr Wheel two_decimal_wheel = {two_decimal_texts.data(), two_pairs_entry, 1'000};

// What a number with so many places, the point included, ends in; `has_digits` tells whether it
// writes digits before the point.
Wheel wheel_of(std::int64_t places, int decimals, bool has_digits) {
  constexpr std::int64_t long_entry = two_pairs_entry;
  constexpr std::int64_t short_entry = pair_entry;
  if (places >= long_entry && (decimals == 0 || decimals >= long_entry)) return four_digit_wheel;
  if (places >= long_entry && decimals == 2 && has_digits) return two_decimal_wheel;
  if (places >= short_entry) return decimals == 1 ? decimal_wheel : digit_pair_wheel;
  return places == 1 && decimals == 0 ? digit_wheel : Wheel();
}

// Whether both halves are what counting within 18 digits gives.
bool is_regular(std::int64_t high, std::int64_t low) {
  return high >= 0 && high < half_base && low >= 0 && low < half_base;
}

bool fits_32_bits(std::int64_t value) {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

std::int64_t magnitude(const FmtValRec& value) { return value.high * half_base + value.low; }

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
  const std::int64_t plain_digits = static_cast<std::int64_t>(width_) - (writes_sign_ ? 1 : 0);
  wheel_ = wheel_of(plain_digits, decimals_, digits_ > 0 && !fraction_only_);
  load(settings_.current);
  start_with(element.first_text());
}

void NumberGenerator::load(const FmtValRec& value) {
  // Values that carry no sign of their own count as plus.
  sign_ = value.sign == sign_minus ? sign_minus : sign_plus;
  high_ = value.high;
  low_ = value.low;
}

void NumberGenerator::restart() {
  end_run();
  load(settings_.start);
  start_with(field_text(settings_.start_text));
}

// A run keeps all but the last characters, so the text must be what rendering the value gives.
void NumberGenerator::start_with(std::string_view text) {
  show(text);
  const NumberShape shape = {static_cast<std::int32_t>(width_), digits_, decimals_};
  if (number_text(high_, low_, shape, sign_character()) == text) plan_run();
}

// Makes `text` the next to be written, cut as the target wants it.
void NumberGenerator::show(std::string_view text) {
  const auto point = fraction_only_ ? text.rfind('.') : std::string_view::npos;
  if (point == std::string_view::npos) {
    set_text(text);
    return;
  }
  std::string fraction;
  if (text.find('+') != std::string_view::npos) {
    fraction = "+";
  } else if (text.find('-') != std::string_view::npos) {
    fraction = "-";
  }
  set_text(fraction.append(text.substr(point)));
}

bool NumberGenerator::grows() const {
  return direction_ == Direction::grow ||
         (direction_ == Direction::through_zero && sign_ == turned_sign_);
}

bool NumberGenerator::is_end_tested() const {
  return is_lead_ && (writes_sign_ || counts_up() || counts_down());
}

// How many steps stay on this side of the end; as many as there are for an element without an end
// test.
std::int64_t NumberGenerator::steps_to_end() const {
  constexpr std::int64_t no_end = std::numeric_limits<std::int64_t>::max();
  if (!is_end_tested() || (direction_ == Direction::through_zero && sign_ != turned_sign_)) {
    return no_end;
  }
  const std::int64_t distance = magnitude(settings_.end) - high_ * half_base - low_;
  return (grows() ? distance : -distance) / step_low_;
}

void NumberGenerator::plan_run() {
  const bool is_steady = is_regular(high_, low_) &&
                         is_regular(settings_.end.high, settings_.end.low) && step_high_ == 0 &&
                         step_low_ > 0 && step_low_ < wheel_.count;
  if (!is_steady || length_ < wheel_.entry_size) return;
  const std::int64_t place = low_ % wheel_.count;
  // Zero may turn the sign, so a number on its way through zero stops before it.
  const std::int64_t lowest = direction_ == Direction::through_zero ? 1 : 0;
  const std::int64_t on_wheel =
      grows() ? (wheel_.count - 1 - place) / step_low_ : (place - lowest) / step_low_;
  begin_run(wheel_, place, grows() ? step_low_ : -step_low_, std::min(on_wheel, steps_to_end()));
}

// Regular halves stay regular by any step that has no high half; the text is then cut to the width.
bool NumberGenerator::keeps_size() const {
  const FmtValRec& start = settings_.start;
  const bool stays_regular = is_regular(high_, low_) && is_regular(start.high, start.low) &&
                             step_high_ == 0 && is_regular(0, step_low_);
  return stays_regular && !fraction_only_ && width_ <= max_number_digits && length_ == width_ &&
         field_text(settings_.start_text).size() == width_;
}

// The end value stands between every value and the end of the range, with room for a step.
bool NumberGenerator::never_cuts() const {
  if (!is_end_tested() || !keeps_size()) return false;
  if (!is_regular(settings_.end.high, settings_.end.low)) return false;
  const std::int64_t end = magnitude(settings_.end);
  const std::int64_t start = magnitude(settings_.start);
  const std::int64_t value = high_ * half_base + low_;
  switch (direction_) {
    case Direction::grow:
      return std::max(start, value) <= end && end + step_low_ < half_base * half_base;
    case Direction::shrink:
      return std::min(start, value) >= end && end >= step_low_;
    default:
      return false;
  }
}

StepOutcome NumberGenerator::step(ItemPass&) {
  const std::int64_t taken = end_run() * step_low_;
  low_ += grows() ? taken : -taken;
  if (!change_magnitude()) return StepOutcome::cut;
  render();
  if (is_lead_ && passed_end()) return StepOutcome::ended;
  plan_run();
  return StepOutcome::going;
}

// False when the magnitude leaves its range.
bool NumberGenerator::change_magnitude() {
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
  if (fraction_only_ || !is_regular(high_, low_) || width_ > max_number_digits) {
    show(number_text(high_, low_, {static_cast<std::int32_t>(width_), digits_, decimals_},
                     sign_character()));
    return;
  }
  // The last characters of the 18 digits, with the point and the sign in place of what they push
  // out.
  char digits[max_number_digits];
  write_nine(digits, static_cast<std::uint32_t>(high_));
  write_nine(digits + half_digits, static_cast<std::uint32_t>(low_));
  char* out = text_ + width_;
  std::size_t left = width_;
  const char* from = digits + max_number_digits;
  if (decimals_ > 0) {
    const std::size_t count = std::min(static_cast<std::size_t>(decimals_), left);
    out -= count;
    from -= count;
    left -= count;
    std::memcpy(out, from, count);
    if (left > 0) *--out = '.', --left;
    if (digits_ == 0 && left > 0) *--out = '0', --left;
  }
  std::memcpy(out - left, from - left, left);
  if (const char sign = sign_character(); sign != 0) text_[0] = sign;
  length_ = width_;
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
