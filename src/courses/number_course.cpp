#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "courses/digit_pairs.h"
#include "courses/make_course.h"
#include "platform/text_lines.h"
#include "values/number_text.h"
#include "values/record_text.h"

namespace korvex {

namespace {

constexpr std::uint64_t magnitude_limit = 1'000'000'000'000'000'000;  // beyond 18 digits

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

// Whether magnitudes grow or shrink, or shrink to zero and grow beyond it.
enum class Direction : std::uint8_t { grow, shrink, through_zero };

struct Counting {
  Direction direction = Direction::grow;
  bool is_signed = false;
  bool starts_minus = false;
};

std::optional<Counting> counting_of(const ElementContext& context, const FmtItemRec& settings) {
  if (settings.kind == format_kind::unsigned_number ||
      settings.kind == format_kind::unsigned_number_in_text) {
    return Counting{context.counts_up() ? Direction::grow : Direction::shrink, false, false};
  }
  const bool is_simple = settings.kind == format_kind::signed_number_simple;
  const bool starts_minus = settings.start.sign == Sign::minus;
  switch (settings.sign) {
    case number_sub_kind::plus_plus_up:
      return Counting{Direction::grow, true, false};
    case number_sub_kind::plus_plus_down:
      return Counting{Direction::shrink, true, false};
    case number_sub_kind::minus_minus_down:
      if (!is_simple) return Counting{Direction::grow, true, true};
      break;
    case number_sub_kind::minus_minus_up:
      if (!is_simple) return Counting{Direction::shrink, true, true};
      break;
    case number_sub_kind::plus_minus_down:
    case number_sub_kind::minus_plus_up: {
      const bool from_minus = settings.sign == number_sub_kind::minus_plus_up;
      if (!is_simple && from_minus == starts_minus) {
        return Counting{Direction::through_zero, true, starts_minus};
      }
      break;
    }
    default:
      break;
  }
  return std::nullopt;
}

std::optional<std::uint64_t> magnitude(const FmtValRec& value) {
  if (value.high < 0 || value.high >= half_base || value.low < 0 || value.low >= half_base) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(value.high * half_base + value.low);
}

// The element as a point and digits between sign and end.
bool has_usual_shape(const FmtItemRec& settings, bool is_signed) {
  const int digits = settings.digits;
  const int decimals = settings.decimals;
  if (digits < 0 || decimals < 0 || digits > max_number_digits || decimals > max_number_digits ||
      digits + decimals < 1 || digits + decimals > max_number_digits) {
    return false;
  }
  const int point = decimals == 0 ? 0 : digits == 0 ? 2 : 1;
  return settings.width == digits + decimals + point + (is_signed ? 1 : 0);
}

// Whether the step down from a magnitude smaller than the step is noticed as one: with halves that
// borrow from each other only the low one tells.
bool underflow_cuts(std::uint64_t last, std::uint64_t step) {
  constexpr auto base = static_cast<std::uint64_t>(half_base);
  return last < step && last % base < step % base;
}

class NumberCourse : public Course {
 public:
  struct Numbers {
    Counting counting;
    std::uint64_t start = 0;
    std::uint64_t end = 0;
    std::uint64_t step = 0;
    bool leads = false;
    bool fraction_only = false;  // of a column with nothing but decimals
  };

  NumberCourse(const FmtItemRec& settings, const Numbers& numbers)
      : counting_(numbers.counting),
        digits_(settings.digits),
        decimals_(static_cast<std::size_t>(settings.decimals)),
        fraction_only_(numbers.fraction_only),
        start_(counting_.starts_minus ? -static_cast<std::int64_t>(numbers.start)
                                      : static_cast<std::int64_t>(numbers.start)),
        change_(goes_up(counting_) ? static_cast<std::int64_t>(numbers.step)
                                   : -static_cast<std::int64_t>(numbers.step)) {
    const auto width = static_cast<std::size_t>(settings.width);
    const std::size_t sign_size = counting_.is_signed ? 1 : 0;
    wheel_ = wheel_of(static_cast<std::int64_t>(width - sign_size), settings.decimals,
                      digits_ > 0 && !fraction_only_);
    facts_.size = fraction_only_ ? sign_size + 1 + decimals_ : width;
    tell_end(numbers);
    const int visible = settings.decimals + (numbers.fraction_only ? 0 : digits_);
    tell_texts(numbers, platform::power_of_ten<std::uint64_t>(visible));
  }

  void write(Steps step, char* out) const override {
    const std::int64_t value = value_at(step);
    const auto size = static_cast<std::uint64_t>(value < 0 ? -value : value);
    // All 18 digits, and after them what is copied along by pieces of one size.
    char digits[2 * max_number_digits] = {};
    constexpr auto base = static_cast<std::uint64_t>(half_base);
    if (size < base) {
      std::memset(digits, '0', half_digits);
    } else {
      write_nine(digits, static_cast<std::uint32_t>(size / base));
    }
    write_nine(digits + half_digits, static_cast<std::uint32_t>(size % base));
    const char* const point = digits + max_number_digits - decimals_;
    if (counting_.is_signed) *out++ = sign_at(step, value);
    if (!fraction_only_ && digits_ == 0) *out++ = '0';
    if (!fraction_only_) {
      const auto before_point = static_cast<std::size_t>(digits_);
      std::memcpy(out, point - before_point, max_number_digits);
      out += before_point;
    }
    if (decimals_ == 0) return;
    *out++ = '.';
    std::memcpy(out, point, max_number_digits);
  }

  WheelRun run(Steps step) const override {
    const std::int64_t size = change_ < 0 ? -change_ : change_;
    if (size >= wheel_.count || facts_.size < wheel_.entry_size) return {};
    const std::int64_t value = value_at(step);
    const std::int64_t place = (value < 0 ? -value : value) % wheel_.count;
    const bool grows = counting_.direction == Direction::through_zero
                           ? (value > 0) == (change_ > 0) && value != 0
                           : counting_.direction == Direction::grow;
    WheelRun run = run_on(wheel_, place, grows ? size : -size);
    // Zero may turn the sign, so a number on its way through zero stops before it.
    if (counting_.direction == Direction::through_zero && !grows) {
      run.steps = place == 0 ? 0 : static_cast<Steps>((place - 1) / size);
    }
    return run;
  }

 private:
  static bool goes_up(const Counting& counting) {
    return (counting.direction == Direction::grow) != counting.starts_minus;
  }

  std::int64_t value_at(Steps step) const {
    return start_ + static_cast<std::int64_t>(step) * change_;
  }

  // Zero is plus, but for a start value of minus zero and for numbers that stay below it.
  char sign_at(Steps step, std::int64_t value) const {
    if (counting_.direction != Direction::through_zero) return counting_.starts_minus ? '-' : '+';
    return value < 0 || (step == 0 && counting_.starts_minus) ? '-' : '+';
  }

  void tell_end(const Numbers& n) {
    Steps values = 1;  // until the end value is passed
    switch (counting_.direction) {
      case Direction::grow:
        if (n.end >= n.start) values = (n.end - n.start) / n.step + 1;
        facts_.end = n.leads ? values : (magnitude_limit - 1 - n.start) / n.step + 1;
        facts_.cuts = n.start + facts_.end * n.step >= magnitude_limit;
        break;
      case Direction::shrink:
        if (n.start >= n.end) values = (n.start - n.end) / n.step + 1;
        facts_.end = n.leads ? values : n.start / n.step + 1;
        facts_.cuts = underflow_cuts(n.start - (facts_.end - 1) * n.step, n.step);
        break;
      case Direction::through_zero:
        values = (n.start + n.end) / n.step + 1;
        facts_.end = n.leads ? values : (magnitude_limit - 1 + n.start) / n.step + 1;
        facts_.cuts = facts_.end * n.step - n.start >= magnitude_limit;
        break;
    }
    if (!n.leads) facts_.past_end = values;
  }

  // The digits that are written are the last ones, so that texts may come back before the end.
  void tell_texts(const Numbers& n, std::uint64_t modulus) {
    const Steps period = modulus / std::gcd(modulus, n.step);
    const bool crosses = counting_.direction == Direction::through_zero;
    Steps before_zero = endless;
    if (crosses && counting_.starts_minus) {
      before_zero = std::max<Steps>((n.start + n.step - 1) / n.step, 1);
    } else if (crosses) {
      before_zero = n.start / n.step + 1;
    }
    const Steps first = std::min(facts_.end, before_zero);
    const Steps second = facts_.end - first;
    facts_.distinct = std::min(first, period) + std::min(second, period);
    facts_.different = first > period ? period : first + std::min(second, period);
    if (!n.leads && !crosses) facts_.period = period;
  }

  const Counting counting_;
  const int digits_;
  const std::size_t decimals_;
  const bool fraction_only_;
  const std::int64_t start_;
  const std::int64_t change_;
  // What the text ends in, if it can end in a wheel's entry: digits, or the point and a digit.
  Wheel wheel_;
};

}  // namespace

std::unique_ptr<const Course> make_number_course(const ElementContext& context,
                                                 const FmtItemRec& settings) {
  const auto counting = counting_of(context, settings);
  const auto start = magnitude(settings.start);
  const auto end = magnitude(settings.end);
  const auto step = magnitude(context.increment);
  if (!counting || !start || !end || !step || *step == 0) return nullptr;
  if (!has_usual_shape(settings, counting->is_signed)) return nullptr;
  const NumberShape shape = {settings.width, settings.digits, settings.decimals};
  const char sign = !counting->is_signed ? '\0' : counting->starts_minus ? '-' : '+';
  if (number_text(settings.start.high, settings.start.low, shape, sign) !=
      field_text(settings.start_text)) {
    return nullptr;
  }
  // The step of one that does not lead may only be small: then it always ends in a cut.
  const bool leads = context.leads(settings);
  if (!leads && context.increment.high != 0) return nullptr;
  const bool fraction_only = context.layout_kind != layout_kind::record_file &&
                             context.item_digits == context.item_decimals && settings.decimals > 0;
  return std::make_unique<NumberCourse>(
      settings, NumberCourse::Numbers{*counting, *start, *end, *step, leads, fraction_only});
}

}  // namespace korvex
