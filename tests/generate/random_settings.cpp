#include "generate/random_settings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <sstream>

#include "format/record_text.h"
#include "formatlang/full_width_table.h"
#include "platform/codepage.h"

namespace korvex::test {

namespace {

std::int64_t power(std::int64_t base, int exponent) {
  return exponent == 0 ? 1 : base * power(base, exponent - 1);
}

std::string digits_of(std::int64_t value, int count) {
  std::string text = std::to_string(value);
  const auto size = static_cast<std::size_t>(count);
  return text.size() < size ? std::string(size - text.size(), '0') + text : text;
}

std::string decimal(std::int64_t value, int decimals) {
  if (decimals == 0) return std::to_string(value);
  std::string text = digits_of(value, decimals + 1);
  return text.insert(text.size() - static_cast<std::size_t>(decimals), ".");
}

std::string letters_of(std::int64_t ordinal, int count, char base) {
  std::string text(static_cast<std::size_t>(count), base);
  for (std::size_t i = text.size(); i-- > 0; ordinal /= 26) {
    text[i] = static_cast<char>(base + ordinal % 26);
  }
  return text;
}

std::string date_of(std::int64_t day, bool is_short) {
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
  const std::string text = digits_of(static_cast<int>(date.year()), 4) +
                           digits_of(static_cast<unsigned>(date.month()), 2) +
                           digits_of(static_cast<unsigned>(date.day()), 2);
  return is_short ? text.substr(2) : text;
}

std::string time_of(std::int64_t second) {
  return digits_of(second / 3600, 2) + digits_of(second / 60 % 60, 2) + digits_of(second % 60, 2);
}

template <std::size_t Count>
int pick(RandomSettings& random, const std::array<int, Count>& choices) {
  return choices[static_cast<std::size_t>(random.between(0, Count - 1))];
}

}  // namespace

std::string RandomItem::description() const {
  std::ostringstream out;
  const ItemAttributes& item = settings.item;
  const RangeTexts& texts = settings.texts;
  out << "attribute " << item.attribute << " signed " << item.signed_flag << " length "
      << item.length << " digits " << item.digits << " decimals " << item.decimals << ", format ["
      << platform::to_utf8(texts.format) << "] start [" << platform::to_utf8(texts.start)
      << "] end [" << platform::to_utf8(texts.end) << "] increment [" << texts.increment
      << "] action " << settings.action << (oddity.empty() ? "" : ", then " + oddity);
  return out.str();
}

std::int64_t RandomSettings::between(std::int64_t low, std::int64_t high) {
  const std::uint64_t wide = (std::uint64_t{random_()} << 32) | random_();
  return low + static_cast<std::int64_t>(wide % static_cast<std::uint64_t>(high - low + 1));
}

// Two values in the direction of the increment and a number of steps apart, often at one end of
// what they may be, across a carry, or at the seam of a number's halves.
RandomSettings::Pair RandomSettings::pair(std::int64_t low, std::int64_t high) {
  const std::int64_t most = std::max<std::int64_t>(1, (high - low) / increment_);
  const std::int64_t steps = std::min(between(1, one_in(3) ? 6 : most_steps_), most);
  const std::int64_t overshoot = between(0, increment_ - 1);
  const std::int64_t span = std::min(steps * increment_ + overshoot, high - low);
  const std::int64_t highest = high - span;
  std::int64_t first = between(low, highest);
  switch (between(1, 6)) {
    case 1:
      first = low + between(0, 3);
      break;
    case 2:
      first = highest - between(0, 3);
      break;
    case 3: {
      const std::int64_t carry = power(one_in(2) ? 10 : 26, static_cast<int>(between(1, 4)));
      first = first / carry * carry - between(0, span);
      break;
    }
    case 4:
      if (highest >= half_base) first = half_base - between(0, span);
      break;
    default:
      break;
  }
  first = std::clamp(first, low, highest);
  return down_ ? Pair{first + span, first} : Pair{first, first + span};
}

RandomSettings::Directive RandomSettings::unsigned_number(int digits) {
  const int whole = digits - decimals_;
  const Pair values = pair(0, power(10, digits) - 1);
  std::string text = "U";
  if (decimals_ > 0) {
    text = (whole > 0 ? std::to_string(whole) : "") + "." + std::to_string(decimals_) + "U";
  } else if (digits > 1 || one_in(2)) {
    text = std::to_string(digits) + "U";
  }
  return {text, decimal(values.start, decimals_), decimal(values.end, decimals_), digits};
}

RandomSettings::Directive RandomSettings::signed_number(int digits) {
  Directive number = unsigned_number(digits);
  number.text.back() = 'D';
  if (!signed_) return number;
  // Signs that count in the same direction.
  switch (between(1, 4)) {
    case 1:  // below zero the magnitudes run the other way
      std::swap(number.start, number.end);
      number.start.insert(0, "-");
      number.end.insert(0, "-");
      break;
    case 2: {  // through zero
      const std::int64_t most =
          std::min(power(10, digits) - 1, increment_ <= 9 ? increment_ * most_steps_ : increment_);
      number.start = (down_ ? "" : "-") + decimal(between(0, most), decimals_);
      number.end = (down_ ? "-" : "") + decimal(between(0, most), decimals_);
      break;
    }
    default:
      break;
  }
  return number;
}

RandomSettings::Directive RandomSettings::letters() {
  const int count = static_cast<int>(between(1, 5));
  const char base = one_in(2) ? 'A' : 'a';
  const Pair values = pair(0, power(26, count) - 1);
  const std::string size = count > 1 || one_in(2) ? std::to_string(count) : "";
  return {size + (base == 'A' ? "S" : "s"), letters_of(values.start, count, base),
          letters_of(values.end, count, base), count};
}

// Every character runs by itself; only the first must run in the increment's direction.
RandomSettings::Directive RandomSettings::full_width(int most) {
  const int count = static_cast<int>(between(1, most));
  std::string start;
  std::string end;
  for (int i = 0; i < count; ++i) {
    Pair values = pair(0, full_width_count - 1);
    if (i > 0 && one_in(3)) std::swap(values.start, values.end);
    for (auto [list, index] : {std::pair(&start, values.start), std::pair(&end, values.end)}) {
      const unsigned code = full_width_code(static_cast<std::int32_t>(index));
      *list += static_cast<char>(code >> 8);
      *list += static_cast<char>(code & 0xFF);
    }
  }
  const std::string size = count > 1 || one_in(2) ? std::to_string(count) : "";
  return {size + "N", start, end, count};
}

RandomSettings::Directive RandomSettings::date() {
  constexpr std::int64_t last_day = 24855;  // 2038-01-19
  const bool is_short = one_in(2);
  const Pair days = pair(0, last_day);
  return {is_short ? (one_in(2) ? "YMD" : "2YMD") : "4YMD", date_of(days.start, is_short),
          date_of(days.end, is_short), is_short ? 6 : 8};
}

RandomSettings::Directive RandomSettings::unchecked_date() {
  const bool is_short = one_in(2);
  const int year_digits = is_short ? 2 : 4;
  const std::int64_t first = is_short ? 0 : 372;
  const Pair days = pair(first, (power(10, year_digits)) * 372 - 1);
  const auto text = [&](std::int64_t day) {
    return digits_of(day / 372, year_digits) + digits_of(day / 31 % 12 + 1, 2) +
           digits_of(day % 31 + 1, 2);
  };
  return {is_short ? "2YMA" : "4YMA", text(days.start), text(days.end), is_short ? 6 : 8};
}

RandomSettings::Directive RandomSettings::time() {
  const Pair seconds = pair(0, 86399);
  return {"T", time_of(seconds.start), time_of(seconds.end), 6};
}

RandomSettings::Directive RandomSettings::timestamp() {
  const Pair seconds = pair(9 * 3600, 24855LL * 86400 + 11647);
  const auto text = [](std::int64_t second) {
    return date_of(second / 86400, false) + " " + time_of(second % 86400);
  };
  return {"TS", text(seconds.start), text(seconds.end), 15};
}

std::string RandomSettings::fixed_text(int most) {
  static constexpr std::string_view characters = "ABCxyz019 -_./,\"%+";
  std::string text;
  for (std::int64_t count = between(1, most); count > 0; --count) {
    text += characters[static_cast<std::size_t>(between(0, std::ssize(characters) - 1))];
  }
  if (text.front() == '%') text.front() = '#';
  return text;
}

RandomSettings::Directive RandomSettings::any_for_character(bool first) {
  switch (between(1, 9)) {
    case 1:
      if (first) {
        Directive number = signed_number(static_cast<int>(between(1, 18)));
        ++number.size;
        return number;
      }
      [[fallthrough]];
    case 2:
      return unsigned_number(static_cast<int>(between(1, 18)));
    case 3: {
      Directive characters = full_width(4);
      characters.size *= 2;
      return characters;
    }
    case 4:
      return date();
    case 5:
      return unchecked_date();
    case 6:
      return time();
    case 7:
      return timestamp();
    default:
      return letters();
  }
}

ItemSettings RandomSettings::propose_character() {
  ItemSettings proposal;
  ItemAttributes& item = proposal.item;
  item.attribute = pick(*this, std::array{1, 2, 3, 6, 7});
  signed_ = item.attribute <= 3 || one_in(2);
  RangeTexts& texts = proposal.texts;
  std::int32_t size = 0;
  int fixed_pieces = 0;
  const auto pieces = static_cast<int>(between(1, 4));
  for (int i = 0; i < pieces; ++i) {
    if (fixed_pieces < 3 && one_in(3)) {
      const std::string fixed = fixed_text(one_in(8) ? 40 : 5);
      texts.format += "'" + fixed + "'";
      size += static_cast<std::int32_t>(fixed.size());
      ++fixed_pieces;
      continue;
    }
    const Directive directive = any_for_character(i == 0);
    texts.format += "%" + directive.text;
    texts.start += (texts.start.empty() ? "" : ",") + directive.start;
    texts.end += (texts.end.empty() ? "" : ",") + directive.end;
    size += directive.size;
  }
  item.digits = size + static_cast<std::int32_t>(between(0, 2));
  item.length = item.digits;
  if (one_in(4)) item.digits = 0;
  if (one_in(8)) item.decimals = item.digits;
  return proposal;
}

ItemSettings RandomSettings::propose_numeric() {
  ItemSettings proposal;
  ItemAttributes& item = proposal.item;
  do {
    item.attribute = static_cast<std::int32_t>(between(4, 27));
  } while (item.attribute == 6 || item.attribute == 7 || item.attribute == 11 ||
           item.attribute == 12);
  signed_ = one_in(2);
  const auto digits = static_cast<int>(between(1, 18));
  if (one_in(2)) decimals_ = static_cast<int>(one_in(3) ? digits : between(1, digits));
  const std::int64_t most_units = std::min(9 * power(10, decimals_), power(10, digits) - 1);
  increment_ = between(1, one_in(2) ? std::min<std::int64_t>(9, most_units) : most_units);
  item.digits = digits;
  item.decimals = decimals_;
  item.length = digits + 2;

  const Directive number = signed_ ? signed_number(digits) : unsigned_number(digits);
  RangeTexts& texts = proposal.texts;
  texts.format = "%" + number.text;
  texts.start = number.start;
  texts.end = number.end;
  if (one_in(6)) {
    texts.format += one_in(2) ? "'.'" : "'07'";
    item.digits += 2;
  }
  return proposal;
}

ItemSettings RandomSettings::propose_national() {
  ItemSettings proposal;
  const Directive directive = full_width(6);
  proposal.item.attribute = one_in(2) ? 11 : 12;
  proposal.item.digits = directive.size + 1;
  proposal.item.length = 2 * proposal.item.digits;
  RangeTexts& texts = proposal.texts;
  texts.format = "%" + directive.text;
  if (one_in(3))
    texts.format = one_in(2) ? "'\x82\x60'" + texts.format : texts.format + "'\x82\x60'";
  texts.start = directive.start;
  texts.end = directive.end;
  return proposal;
}

ItemSettings RandomSettings::propose_moment() {
  ItemSettings proposal;
  const int attribute = pick(*this, std::array{28, 31, 32});
  const Directive directive = attribute == 31   ? time()
                              : attribute == 32 ? timestamp()
                              : one_in(2)       ? date()
                                                : unchecked_date();
  proposal.item = {attribute, 0, 20, directive.size, 0};
  proposal.texts = {"%" + directive.text, directive.start, directive.end, ""};
  return proposal;
}

ItemSettings RandomSettings::propose() {
  down_ = one_in(2);
  increment_ = one_in(2) ? 1 : between(1, 9);
  decimals_ = 0;
  signed_ = false;
  ItemSettings proposal;
  const std::int64_t sort = between(1, 8);
  if (sort <= 3) {
    proposal = propose_character();
  } else if (sort <= 5) {
    proposal = propose_numeric();
  } else if (sort == 6) {
    proposal = propose_national();
  } else {
    proposal = propose_moment();
  }
  proposal.item.signed_flag = signed_ ? 1 : 0;
  proposal.texts.increment = (down_ ? "-" : one_in(4) ? "+" : "") + decimal(increment_, decimals_);
  proposal.action = one_in(2) ? exceeded_action::repeat : exceeded_action::initialize;
  return proposal;
}

RandomItem RandomSettings::draw() {
  RandomItem item;
  std::int32_t refusal = 0;
  do {
    item.settings = propose();
    item.column = try_column(item.settings, refusal);
  } while (!item.column);
  if (one_in(30)) item.column->record.generation_type = generation_type::initial_value;
  if (one_in(30)) item.column->record.generation_type = generation_type::reference;
  return item;
}

RandomItem RandomSettings::draw_odd() {
  RandomItem item = draw();
  item.oddity = odd_fields(*item.column);
  if (one_in(3)) item.oddity += "; " + odd_fields(*item.column);
  return item;
}

std::string RandomSettings::odd_fields(ClFmtColInf& column) {
  const auto count = std::ssize(column.elements);
  FmtItemRec& element = column.elements[static_cast<std::size_t>(between(0, count - 1))]->record;
  const std::string place = " of element " + std::to_string(element.sequence) + " = ";
  const auto set = [](const std::string& name, std::int32_t& field, std::int64_t value) {
    field = static_cast<std::int32_t>(value);
    return name + std::to_string(value);
  };
  switch (between(1, 11)) {
    case 1:
      return set("lead = ", column.record.lead_element, 0);
    case 2:
      return set("lead = ", column.record.lead_element, between(0, count + 1));
    case 3:
      return set("increment = ", column.record.increment.low, between(1, 30));
    case 4:
      // An element of days that only carries one month runs away with more.
      return element.kind == format_kind::date || element.kind == format_kind::time
                 ? set("increment = ", column.record.increment.low, between(1, 3000))
                 : set("increment = ", column.record.increment.low, 31);
    case 5:
      return set("width" + place, element.width, between(0, 30));
    case 6:
      return set("sub-kind" + place, element.sign,
                 pick(*this, std::array{10, 11, 12, 20, 21, 22, 0}));
    case 7:
      return set("kind" + place, element.kind, one_in(6) ? 1001 : 902);
    case 8:
      element.current.high = static_cast<std::int32_t>(between(0, 999'999'999));
      element.end.high = 999'999'999;
      element.end.low = 999'999'999;
      return "current and end high changed" + place + std::to_string(element.current.high);
    case 9:
      store_field(element.start_text, "");
      return "no start text" + place;
    case 10:
      column.record.digits = column.record.decimals;
      return "item digits = decimals";
    default:
      return set("attribute = ", column.record.attribute, between(0, 40));
  }
}

}  // namespace korvex::test
