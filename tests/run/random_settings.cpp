#include "run/random_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <sstream>

#include "platform/codepage.h"
#include "values/ordinals.h"
#include "values/record_text.h"

namespace korvex::test {

namespace {

constexpr std::int64_t day_seconds = 86400;
constexpr std::int64_t last_day = 24855;             // 2038-01-19
constexpr std::int64_t year_days = 12 * 31;          // where nobody checks them
constexpr std::int64_t seconds_of_last_day = 11647;  // up to 03:14:07

std::int64_t power(std::int64_t base, int exponent) {
  return exponent == 0 ? 1 : base * power(base, exponent - 1);
}

std::string digits_of(std::int64_t value, int count) {
  const std::string text = std::to_string(value);
  const auto size = static_cast<std::size_t>(count);
  return text.size() < size ? std::string(size - text.size(), '0') + text : text;
}

std::string decimal(std::int64_t value, int decimals) {
  if (decimals == 0) return std::to_string(value);
  std::string text = digits_of(value, decimals + 1);
  return text.insert(text.size() - static_cast<std::size_t>(decimals), ".");
}

std::string date_of(std::int64_t day) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
  return digits_of(static_cast<int>(date.year()), 4) +
         digits_of(static_cast<unsigned>(date.month()), 2) +
         digits_of(static_cast<unsigned>(date.day()), 2);
}

std::string short_date_of(std::int64_t day) { return date_of(day).substr(2); }

// Every month has 31 days.
template <int year_digits>
std::string unchecked_date_of(std::int64_t day) {
  return digits_of(day / year_days, year_digits) + digits_of(day / 31 % 12 + 1, 2) +
         digits_of(day % 31 + 1, 2);
}

std::string time_of(std::int64_t second) {
  return digits_of(second / 3600, 2) + digits_of(second / 60 % 60, 2) + digits_of(second % 60, 2);
}

std::string timestamp_of(std::int64_t second) {
  return date_of(second / day_seconds) + " " + time_of(second % day_seconds);
}

// Dates and times: attribute, directive, least and greatest value, size and text.
struct Moment {
  Attribute attribute;
  const char* directive;
  std::int64_t low, high;
  int size;
  std::string (*text)(std::int64_t);
};
constexpr Moment moments[] = {
    {attribute::date, "4YMD", 0, last_day, 8, date_of},
    {attribute::date, "2YMD", 0, last_day, 6, short_date_of},
    {attribute::date, "YMD", 0, last_day, 6, short_date_of},
    {attribute::date, "4YMA", year_days, 10'000 * year_days - 1, 8, unchecked_date_of<4>},
    {attribute::date, "2YMA", 0, 100 * year_days - 1, 6, unchecked_date_of<2>},
    {attribute::time, "T", 0, day_seconds - 1, 6, time_of},
    {attribute::time, "T", 0, day_seconds - 1, 6, time_of},
    {attribute::timestamp, "TS", 9 * 3600, last_day* day_seconds + seconds_of_last_day, 15,
     timestamp_of},
    {attribute::timestamp, "TS", 9 * 3600, last_day* day_seconds + seconds_of_last_day, 15,
     timestamp_of},
};

// One directive with the texts of its start and end values, and the bytes or digits that it takes.
struct Directive {
  std::string text, start, end;
  std::int32_t size = 0;
};

// Proposes the settings of one item, which the checks may still refuse.
class Proposal {
 public:
  Proposal(RandomSettings& random, int most_steps) : random_(random), most_steps_(most_steps) {}

  ItemSettings propose() {
    const std::int64_t sort = random_.between(1, 8);
    if (sort <= 3) {
      propose_character();
    } else if (sort <= 5) {
      propose_number();
    } else if (sort == 6) {
      propose_national();
    } else {
      propose_moment();
    }
    item_.signed_flag = flag_of(signed_);
    const char* sign = down_ ? "-" : one_in(4) ? "+" : "";
    texts_.increment = sign + decimal(increment_, decimals_);
    return {item_, texts_, one_in(2) ? exceeded_action::repeat : exceeded_action::initialize};
  }

 private:
  bool one_in(int count) { return random_.one_in(count); }
  std::int64_t between(std::int64_t low, std::int64_t high) { return random_.between(low, high); }

  // Two values in the direction of the increment and a number of steps apart, often at one end of
  // what they may be, across a carry, or at the seam of a number's halves.
  std::pair<std::int64_t, std::int64_t> pair(std::int64_t low, std::int64_t high) {
    const std::int64_t most = std::max<std::int64_t>(1, (high - low) / increment_);
    const std::int64_t steps = std::min(between(1, one_in(3) ? 6 : most_steps_), most);
    const std::int64_t overshoot = between(0, increment_ - 1);
    const std::int64_t span = std::min(steps * increment_ + overshoot, high - low);
    const std::int64_t highest = high - span;
    const std::int64_t carry = power(one_in(2) ? 10 : 26, static_cast<int>(between(1, 4)));
    const std::int64_t anywhere = between(low, highest);
    const std::int64_t firsts[] = {low + between(0, 3),
                                   highest - between(0, 3),
                                   anywhere / carry * carry - between(0, span),
                                   highest < half_base ? anywhere : half_base - between(0, span),
                                   anywhere,
                                   anywhere};
    const std::int64_t first = std::clamp(random_.pick(firsts), low, highest);
    return down_ ? std::pair(first + span, first) : std::pair(first, first + span);
  }

  template <typename Text>
  Directive ranged(const std::string& directive, std::int64_t low, std::int64_t high, int size,
                   Text text) {
    const auto [start, end] = pair(low, high);
    return {directive, text(start), text(end), size};
  }

  std::string counted(int count, const char* letter) {
    return (count > 1 || one_in(2) ? std::to_string(count) : "") + letter;
  }

  Directive unsigned_number(int digits) {
    const int whole = digits - decimals_;
    std::string text = counted(digits, "U");
    if (decimals_ > 0) {
      text = (whole > 0 ? std::to_string(whole) : "") + "." + std::to_string(decimals_) + "U";
    }
    return ranged(text, 0, power(10, digits) - 1, digits,
                  [&](std::int64_t value) { return decimal(value, decimals_); });
  }

  // Signs that count in the same direction: below zero the magnitudes run the other way.
  Directive signed_number(int digits) {
    Directive number = unsigned_number(digits);
    number.text.back() = 'D';
    const std::int64_t signs = signed_ ? between(1, 4) : 4;
    if (signs == 1) {
      std::swap(number.start, number.end);
      number.start.insert(0, "-");
      number.end.insert(0, "-");
    } else if (signs == 2) {  // through zero
      const std::int64_t most =
          std::min(power(10, digits) - 1, increment_ <= 9 ? increment_ * most_steps_ : increment_);
      number.start = (down_ ? "" : "-") + decimal(between(0, most), decimals_);
      number.end = (down_ ? "-" : "") + decimal(between(0, most), decimals_);
    }
    return number;
  }

  Directive letters() {
    const int count = static_cast<int>(between(1, 5));
    const char base = one_in(2) ? 'A' : 'a';
    const auto text = [&](std::int64_t ordinal) {
      std::string letters(static_cast<std::size_t>(count), base);
      for (std::size_t i = letters.size(); i-- > 0; ordinal /= 26) {
        letters[i] = static_cast<char>(base + ordinal % 26);
      }
      return letters;
    };
    return ranged(counted(count, base == 'A' ? "S" : "s"), 0, power(26, count) - 1, count, text);
  }

  // Every character runs by itself; only the first must run in the increment's direction.
  Directive full_width(int most) {
    const int count = static_cast<int>(between(1, most));
    Directive all = {counted(count, "N"), "", "", count};
    for (int i = 0; i < count; ++i) {
      auto [start, end] = pair(0, full_width_count - 1);
      if (i > 0 && one_in(3)) std::swap(start, end);
      for (auto [list, index] : {std::pair(&all.start, start), std::pair(&all.end, end)}) {
        const unsigned code = full_width_code(static_cast<std::int32_t>(index));
        *list += static_cast<char>(code >> 8);
        *list += static_cast<char>(code & 0xFF);
      }
    }
    return all;
  }

  Directive moment(const Moment& m) { return ranged(m.directive, m.low, m.high, m.size, m.text); }

  std::string fixed_text(int most) {
    std::string text;
    for (std::int64_t count = between(1, most); count > 0; --count) {
      text += random_.pick(std::string_view("ABCxyz019 -_./,\"%+"));
    }
    if (text.front() == '%') text.front() = '#';
    return text;
  }

  Directive any_for_character(bool is_first) {
    const std::int64_t sort = between(1, 9);
    const int digits = static_cast<int>(between(1, 18));
    Directive directive;
    if (sort == 1 && is_first) {
      directive = signed_number(digits);
      ++directive.size;
      return directive;
    }
    if (sort == 3) {
      directive = full_width(4);
      directive.size *= 2;
      return directive;
    }
    if (sort <= 2) return unsigned_number(digits);
    return sort <= 7 ? moment(random_.pick(moments)) : letters();
  }

  void propose_character() {
    item_.attribute = Attribute{random_.pick(std::array{1, 2, 3, 6, 7})};
    signed_ = is_always_signed(item_.attribute) || one_in(2);
    std::int32_t size = 0;
    int fixed_pieces = 0;
    const auto pieces = static_cast<int>(between(1, 4));
    for (int i = 0; i < pieces; ++i) {
      if (fixed_pieces < 3 && one_in(3)) {
        const std::string fixed = fixed_text(one_in(8) ? 40 : 5);
        texts_.format += "'" + fixed + "'";
        size += static_cast<std::int32_t>(fixed.size());
        ++fixed_pieces;
        continue;
      }
      const Directive directive = any_for_character(i == 0);
      texts_.format += "%" + directive.text;
      texts_.start += (texts_.start.empty() ? "" : ",") + directive.start;
      texts_.end += (texts_.end.empty() ? "" : ",") + directive.end;
      size += directive.size;
    }
    item_.length = item_.digits = size + static_cast<std::int32_t>(between(0, 2));
    if (one_in(4)) item_.digits = 0;
    if (one_in(8)) item_.decimals = item_.digits;
  }

  void set_directive(const Directive& directive) {
    texts_ = {"%" + directive.text, directive.start, directive.end, ""};
  }

  void propose_number() {
    item_.attribute = Attribute{random_.pick(
        std::array{4, 5, 8, 9, 10, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27})};
    signed_ = one_in(2);
    const auto digits = static_cast<int>(between(1, 18));
    if (one_in(2)) decimals_ = static_cast<int>(one_in(3) ? digits : between(1, digits));
    const std::int64_t most_units = std::min(9 * power(10, decimals_), power(10, digits) - 1);
    increment_ = between(1, one_in(2) ? std::min<std::int64_t>(9, most_units) : most_units);
    item_.digits = digits;
    item_.decimals = decimals_;
    item_.length = digits + 2;
    set_directive(signed_ ? signed_number(digits) : unsigned_number(digits));
    if (one_in(6)) {
      texts_.format += one_in(2) ? "'.'" : "'07'";
      item_.digits += 2;
    }
  }

  void propose_national() {
    const Directive directive = full_width(6);
    item_.attribute = Attribute{one_in(2) ? 11 : 12};
    item_.digits = directive.size + 1;
    item_.length = 2 * item_.digits;
    set_directive(directive);
    const std::int64_t place = between(1, 6);
    if (place == 1) texts_.format.insert(0, "'\x82\x60'");
    if (place == 2) texts_.format += "'\x82\x60'";
  }

  void propose_moment() {
    const Moment& m = random_.pick(moments);
    const Directive directive = moment(m);
    item_ = {m.attribute, Flag::off, 20, m.size, 0};
    set_directive(directive);
  }

  RandomSettings& random_;
  int most_steps_;
  bool down_ = one_in(2);
  std::int64_t increment_ = one_in(2) ? 1 : between(1, 9);  // in units of the last digit
  int decimals_ = 0;
  bool signed_ = false;
  ItemAttributes item_ = {};
  RangeTexts texts_ = {};
};

// Changes a field of the settings, or of one of their elements, and says what.
std::string odd_field(RandomSettings& random, ClFmtColInf& column) {
  const auto count = std::ssize(column.elements);
  FmtColRec& record = column.record;
  FmtItemRec& element =
      column.elements[static_cast<std::size_t>(random.between(0, count - 1))]->record;
  const std::string place = " of element " + std::to_string(number_of(element.sequence));
  if (random.one_in(11)) {
    store_field(element.start_text, "");
    return "no start text" + place;
  }
  // An element of days that only carries one month runs away with more.
  const bool is_safe = element.kind == format_kind::date || element.kind == format_kind::time;
  struct Oddity {
    std::string name;
    void* field;  // of 32 bits
    std::int64_t value;
  };
  const Oddity oddities[] = {
      {"lead", &record.lead_element, 0},
      {"lead", &record.lead_element, random.between(0, count + 1)},
      {"increment", &record.increment.low, random.between(1, 30)},
      {"increment", &record.increment.low, is_safe ? random.between(1, 3000) : 31},
      {"width" + place, &element.width, random.between(0, 30)},
      {"sub-kind" + place, &element.sign, random.pick(std::array{10, 11, 12, 20, 21, 22, 0})},
      {"kind" + place, &element.kind, random.one_in(6) ? 1001 : 902},
      {"no end, current high" + place, &element.current.high, random.between(0, half_base - 1)},
      {"item digits", &record.digits, record.decimals},
      {"attribute", &record.attribute, random.between(0, 40)},
  };
  const Oddity oddity = random.pick(oddities);
  const auto value = static_cast<std::int32_t>(oddity.value);
  std::memcpy(oddity.field, &value, sizeof value);
  if (oddity.field == &element.current.high) element.end.high = element.end.low = half_base - 1;
  return oddity.name + " = " + std::to_string(oddity.value);
}

}  // namespace

std::unique_ptr<ClFmtColInf> checked_column(const ItemSettings& settings) {
  ClFmtLvlInf level;
  const auto stored = level.check_and_store(ItemNumber{1}, settings.item, settings.texts,
                                            {settings.action, Flag::off});
  return stored ? std::move(level.columns.front()) : nullptr;
}

std::string RandomItem::description() const {
  std::ostringstream out;
  const ItemAttributes& item = settings.item;
  const RangeTexts& texts = settings.texts;
  out << "attribute " << number_of(item.attribute) << " signed " << is_on(item.signed_flag)
      << " length " << item.length << " digits " << item.digits << " decimals " << item.decimals
      << ", [" << platform::to_utf8(texts.format + "] from [" + texts.start + "] to [" + texts.end)
      << "] by [" << texts.increment << "] action " << number_of(settings.action) << " " << oddity;
  return out.str();
}

std::int64_t RandomSettings::between(std::int64_t low, std::int64_t high) {
  const std::uint64_t wide = (std::uint64_t{random_()} << 32) | random_();
  return low + static_cast<std::int64_t>(wide % static_cast<std::uint64_t>(high - low + 1));
}

RandomItem RandomSettings::draw() {
  RandomItem item;
  do {
    item.settings = Proposal(*this, most_steps_).propose();
    item.column = checked_column(item.settings);
  } while (!item.column);
  if (one_in(30)) item.column->record.generation_type = generation_type::initial_value;
  if (one_in(30)) item.column->record.generation_type = generation_type::reference;
  return item;
}

RandomItem RandomSettings::draw_odd() {
  RandomItem item = draw();
  item.oddity = odd_field(*this, *item.column);
  if (one_in(3)) item.oddity += "; " + odd_field(*this, *item.column);
  return item;
}

ItemRun::ItemRun(const ClFmtColInf& column, LayoutKind layout_kind, bool quotation) {
  auto copy = std::make_unique<ClFmtColInf>(column.record);
  std::vector<FmtItemRec> elements;
  for (const auto& element : column.elements) elements.push_back(element->record);
  copy->set_elements(elements);
  copy->record.item_number = ItemNumber{1};
  main_.settings.set_run_mode(run_mode::settings_only);
  main_.settings.begin(SettingsLevel{1}, StoredRecords{0}, layout_kind);
  main_.settings.current_level()->append(std::move(copy));
  main_.items.push_back(std::make_unique<ClDGCol>());
  main_.items.back()->item_number = ItemNumber{1};
  EXPECT_EQ(prepare(main_, {layout_kind, quotation}, {}), error::none);
}

}  // namespace korvex::test
