#include <algorithm>
#include <limits>
#include <string>

#include "courses/literal_element.h"
#include "values/number_text.h"
#include "values/record_text.h"

namespace korvex {

namespace {

constexpr std::int32_t max_width = static_cast<std::int32_t>(element_text_size) - 1;

bool fits_32_bits(std::int64_t value) {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

class LiteralNumber : public CopiedElement<LiteralNumber> {
 public:
  LiteralNumber(const ElementContext& context, const ClFmtItemInf& element)
      : CopiedElement(context, element),
        shape_{std::clamp(settings_.width, 0, max_width),
               std::clamp(settings_.digits, 0, max_number_digits),
               std::clamp(settings_.decimals, 0, max_number_digits)},
        writes_sign_(settings_.kind == format_kind::signed_number ||
                     settings_.kind == format_kind::signed_number_simple),
        fraction_only_(context.layout_kind != layout_kind::record_file &&
                       context.item_digits == context.item_decimals),
        direction_(direction()),
        turned_sign_(settings_.sign == number_sub_kind::plus_minus_down ? Sign::minus : Sign::plus),
        step_high_(context.increment.high),
        step_low_(context.increment.low) {
    load(settings_.current);
    show(element.first_text());
  }

  void restart() override {
    load(settings_.start);
    show(field_text(settings_.start_text));
  }

  StepOutcome advance(ItemPass&) override {
    if (!change_magnitude()) return StepOutcome::cut;
    show(number_text(high_, low_, shape_, sign_character()));
    return is_lead_ && passed_end() ? StepOutcome::ended : StepOutcome::going;
  }

 private:
  enum class Direction : std::uint8_t { grow, shrink, through_zero };

  Direction direction() const {
    if (!writes_sign_) return counts_up() ? Direction::grow : Direction::shrink;
    switch (settings_.sign) {
      case number_sub_kind::plus_plus_up:
      case number_sub_kind::minus_minus_down:
        return Direction::grow;
      case number_sub_kind::plus_plus_down:
      case number_sub_kind::minus_minus_up:
        return Direction::shrink;
      default:
        return Direction::through_zero;
    }
  }

  void load(const FmtValRec& value) {
    // Values that carry no sign of their own count as plus.
    sign_ = value.sign == Sign::minus ? Sign::minus : Sign::plus;
    high_ = value.high;
    low_ = value.low;
  }

  // Makes `text` the next to be written; a column with nothing but decimals drops what is
  // before them.
  void show(std::string_view text) {
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

  // False when the magnitude leaves its range.
  bool change_magnitude() {
    bool in_range = true;
    if (direction_ == Direction::shrink) {
      in_range = subtract();
    } else if (direction_ == Direction::grow || sign_ == turned_sign_) {
      add();
      in_range = high_ < half_base;
    } else {
      subtract_through_zero();
    }
    return in_range && fits_32_bits(high_) && fits_32_bits(low_);
  }

  void add() {
    low_ += step_low_;
    high_ += step_high_;
    if (low_ >= half_base) {
      ++high_;
      low_ -= half_base;
    }
  }

  bool subtract() {
    low_ -= step_low_;
    high_ -= step_high_;
    if (low_ >= 0) return true;
    if (high_ <= 0) return false;
    --high_;
    low_ += half_base;
    return true;
  }

  void subtract_through_zero() {
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
    if (turned_sign_ == Sign::plus && high_ == 0 && low_ == 0) sign_ = Sign::plus;
  }

  char sign_character() const {
    if (!writes_sign_) return 0;
    if (direction_ == Direction::through_zero) return sign_ == Sign::minus ? '-' : '+';
    return settings_.sign == number_sub_kind::minus_minus_down ||
                   settings_.sign == number_sub_kind::minus_minus_up
               ? '-'
               : '+';
  }

  // -1, 0 or 1 as the magnitude lies below, at or above the end's.
  int order_to_end() const {
    const FmtValRec& end = settings_.end;
    if (high_ != end.high) return high_ < end.high ? -1 : 1;
    if (low_ != end.low) return low_ < end.low ? -1 : 1;
    return 0;
  }

  bool passed_end() const {
    const int order = order_to_end();
    if (!writes_sign_) return counts_up() ? order > 0 : counts_down() && order < 0;
    if (direction_ == Direction::through_zero) return sign_ == turned_sign_ && order > 0;
    return direction_ == Direction::grow ? order > 0 : order < 0;
  }

  const NumberShape shape_;
  const bool writes_sign_;
  const bool fraction_only_;
  const Direction direction_;
  const Sign turned_sign_;  // through zero: the sign beyond it
  const std::int64_t step_high_;
  const std::int64_t step_low_;

  Sign sign_{};
  std::int64_t high_ = 0;
  std::int64_t low_ = 0;
};

}  // namespace

std::unique_ptr<LiteralElement> make_literal_number(const ElementContext& context,
                                                    const ClFmtItemInf& element) {
  return std::make_unique<LiteralNumber>(context, element);
}

}  // namespace korvex
