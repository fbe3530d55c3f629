#include "generate/reference_assembler.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "format/record_text.h"
#include "formatlang/ordinals.h"

namespace korvex::test {

namespace {

constexpr std::int32_t out_of_range = -45;

std::string padded(std::int64_t value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%0*lld", digits, static_cast<long long>(value));
  return text;
}

// A half's decimal text, left-padded with zeros to nine characters.
std::string half_text(std::int64_t half) {
  const std::string text = std::to_string(half);
  return text.size() < 9 ? std::string(9 - text.size(), '0') + text : text;
}

bool greater(const FmtValRec& a, const FmtValRec& b) {
  return a.high > b.high || (a.high == b.high && a.low > b.low);
}

std::string last_characters(const std::string& text, std::int32_t count) {
  const auto size = static_cast<std::size_t>(count < 0 ? 0 : count);
  return text.size() > size ? text.substr(text.size() - size) : text;
}

std::string with_century(const FmtItemRec& element, const std::string& text) {
  if (element.width != 6) return text;
  const int year = std::atoi(text.substr(0, 2).c_str());
  if (year >= 70 && year <= 99) return "19" + text;
  if (year >= 0 && year <= 38) return "20" + text;
  return text;
}

bool is_leap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int month_length(int year, int month) {
  if (month == 2) return is_leap(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

struct Day {
  int year, month, day;
};

Day day_after(Day d) {
  if (++d.day <= month_length(d.year, d.month)) return d;
  d.day = 1;
  if (++d.month <= 12) return d;
  return {d.year + 1, 1, 1};
}

Day day_before(Day d) {
  if (--d.day >= 1) return d;
  if (--d.month >= 1) return {d.year, d.month, month_length(d.year, d.month)};
  return {d.year - 1, 12, 31};
}

Day days_later(Day d, std::int64_t count) {
  for (; count > 0; --count) d = day_after(d);
  for (; count < 0; ++count) d = day_before(d);
  return d;
}

std::int64_t number_of(Day d) { return (d.year * 100LL + d.month) * 100 + d.day; }

Day day_of(const FmtValRec& value) { return {value.year, value.month, value.day}; }

void set_day(FmtValRec& value, Day d) {
  value.year = static_cast<std::uint16_t>(d.year);
  value.month = static_cast<std::uint16_t>(d.month);
  value.day = static_cast<std::uint16_t>(d.day);
}

std::int64_t second_of(const FmtValRec& value) {
  return value.hour * 3600LL + value.minute * 60 + value.second;
}

void set_second(FmtValRec& value, std::int64_t second) {
  value.hour = static_cast<std::uint16_t>(second / 3600);
  value.minute = static_cast<std::uint16_t>(second / 60 % 60);
  value.second = static_cast<std::uint16_t>(second % 60);
}

std::string moment_text(const FmtItemRec& element, const FmtValRec& value, int year_digits,
                        const std::string& date_separator, const std::string& time_separator) {
  const std::string date = padded(value.year, year_digits) + date_separator +
                           padded(value.month, 2) + date_separator + padded(value.day, 2);
  const std::string time = padded(value.hour, 2) + time_separator + padded(value.minute, 2) +
                           time_separator + padded(value.second, 2);
  if (element.kind == 1002) return time;
  if (element.kind == 1003) return date + " " + time;
  return element.width == 6 && year_digits == 4 ? date.substr(2) : date;
}

// Digits alone: what the next value is kept and compared as.
std::string plain_text(const FmtItemRec& element, const FmtValRec& value) {
  return moment_text(element, value, 4, "", "");
}

}  // namespace

ReferenceItem::ReferenceItem(const ClFmtColInf& column, std::int32_t layout_kind, bool quotation)
    : settings_(column.record), layout_kind_(layout_kind), quotation_(quotation) {
  for (const auto& element : column.elements) {
    const FmtItemRec& record = element->record;
    std::string text(field_text(record.text));
    if (record.kind != 999) {
      const std::int32_t bytes = record.kind == 905 ? 2 * record.width : record.width;
      text = last_characters(std::string(field_text(record.start_text)), bytes);
    }
    elements_.push_back({record, record.current, text});
  }
}

bool ReferenceItem::is_quoted() const {
  if (!quotation_) return false;
  switch (settings_.attribute) {
    case 1:
    case 2:
    case 3:
    case 11:
    case 12:
    case 28:
    case 31:
    case 32:
      return true;
    default:
      return false;
  }
}

bool ReferenceItem::is_lead(const Element& element) const {
  return element.settings.kind != 999 && element.settings.sequence == settings_.lead_element;
}

void ReferenceItem::close_field(std::string& line) const {
  if (is_quoted()) line += '"';
  line += ',';
}

std::int32_t ReferenceItem::append_field(std::string& line) {
  if (settings_.generation_type == 1) {
    line += ',';
    return 0;
  }
  if (is_quoted()) line += '"';
  end_exceeded_ = false;
  date_overflow_ = false;
  for (Element& element : elements_) {
    const std::int32_t kind = element.settings.kind;
    if (element.current_text.empty()) continue;
    const std::int32_t result = generate(element, line);
    if (result == -7 || result == -40) return result;
    if (result < 0) {
      end_exceeded_ = true;
      break;
    }
    if (kind == 904 || kind == 905 || kind == 908) {
      const bool passed = (forwards() && element.current.low > element.settings.end.low) ||
                          (backwards() && element.current.low < element.settings.end.low);
      if (!is_lead(element) && passed) start_again(element);
    }
    if (!is_lead(element)) continue;
    if ((kind == 906 || kind == 1003) && date_overflow_) {
      end_exceeded_ = true;
      break;
    }
    if (end_passed(element)) end_exceeded_ = true;
  }
  close_field(line);
  if (end_exceeded_) reset_or_empty();
  return 0;
}

void ReferenceItem::start_again(Element& element) {
  element.current_text = field_text(element.settings.start_text);
  element.current = element.settings.start;
}

void ReferenceItem::reset_or_empty() {
  for (Element& element : elements_) {
    if (settings_.exceeded_action != 1) {
      element.current_text.clear();
      continue;
    }
    start_again(element);
    if (element.settings.kind == 999) element.current_text = field_text(element.settings.text);
  }
}

std::int32_t ReferenceItem::generate(Element& element, std::string& line) {
  const std::int32_t sub_kind = element.settings.sign;
  switch (element.settings.kind) {
    case 900:
      if (sub_kind == 10 || sub_kind == 11 || sub_kind == 12 || sub_kind == 20 || sub_kind == 21 ||
          sub_kind == 22) {
        return number(element, line, true);
      }
      return -40;
    case 901:
    case 903:
      return number(element, line, false);
    case 902:
      return sub_kind == 10 || sub_kind == 11 ? number(element, line, true) : -40;
    case 904:
    case 905:
    case 908:
      characters(element, line);
      return 0;
    case 906:
    case 907:
    case 1002:
    case 1003:
      moment(element, line);
      return 0;
    case 999:
      line += element.current_text;
      return 0;
    default:
      return -7;
  }
}

bool ReferenceItem::end_passed(const Element& element) const {
  const FmtValRec& next = element.current;
  const FmtValRec& end = element.settings.end;
  const std::int32_t kind = element.settings.kind;
  if (kind == 900 || kind == 902) {
    switch (element.settings.sign) {
      case 10:
      case 20:
        return greater(next, end);
      case 11:
      case 21:
        return greater(end, next);
      case 12:
        return next.sign == 2 && greater(next, end);
      default:
        return next.sign == 1 && greater(next, end);
    }
  }
  if (kind == 901 || kind == 903) return forwards() ? greater(next, end) : greater(end, next);
  if (kind == 904 || kind == 905 || kind == 908) {
    return forwards() ? next.low > end.low : next.low < end.low;
  }
  const FmtItemRec& record = element.settings;
  const std::string text = with_century(record, element.current_text);
  const std::string start_text = with_century(record, std::string(field_text(record.start_text)));
  const std::string end_text = with_century(record, std::string(field_text(record.end_text)));
  return forwards() ? text > end_text || text < start_text : text < end_text || text > start_text;
}

std::string ReferenceItem::shown_number(const Element& element) const {
  const std::string& text = element.current_text;
  const auto point = text.rfind('.');
  if (layout_kind_ == 1 || settings_.digits != settings_.decimals || point == std::string::npos) {
    return text;
  }
  std::string sign;
  if (text.find('+') != std::string::npos) {
    sign = "+";
  } else if (text.find('-') != std::string::npos) {
    sign = "-";
  }
  return sign + text.substr(point);
}

std::int32_t ReferenceItem::number(Element& element, std::string& line, bool sign_written) {
  line += shown_number(element);

  const std::int32_t sub_kind = sign_written ? element.settings.sign : forwards() ? 10 : 11;
  std::int32_t sign = element.current.sign;
  std::int64_t low = element.current.low;
  std::int64_t high = element.current.high;
  const std::int64_t step_low = settings_.increment.low;
  const std::int64_t step_high = settings_.increment.high;
  const bool adds = sub_kind == 10 || sub_kind == 20 || (sub_kind == 12 && sign == 2) ||
                    (sub_kind == 22 && sign == 1);
  if (adds) {
    low += step_low;
    high += step_high;
    if (low >= 1'000'000'000) {
      high += 1;
      low -= 1'000'000'000;
    }
    if (high >= 1'000'000'000) return out_of_range;
  } else {
    low -= step_low;
    high -= step_high;
    if (sub_kind == 11 || sub_kind == 21) {
      if (low < 0) {
        if (high <= 0) return out_of_range;
        high -= 1;
        low += 1'000'000'000;
      }
    } else {
      const std::int32_t other_sign = sub_kind == 12 ? 2 : 1;
      if (high == 0 && low < 0) {
        sign = other_sign;
        low = -low;
      } else if (high < 0 && low == 0) {
        sign = other_sign;
        high = -high;
      } else if (high < 0 && low < 0) {
        sign = other_sign;
        high = -high;
        low = -low;
      } else if (high < 0 && low > 0) {
        sign = other_sign;
        high = -high - 1;
        low = 1'000'000'000 - low;
      } else if (high > 0 && low < 0) {
        high -= 1;
        low += 1'000'000'000;
      }
      if (sub_kind == 22 && high == 0 && low == 0) sign = 1;
    }
  }
  using Limits = std::numeric_limits<std::int32_t>;
  if (high > Limits::max() || high < Limits::min() || low > Limits::max() || low < Limits::min()) {
    return out_of_range;
  }
  element.current.sign = sign;
  element.current.high = static_cast<std::int32_t>(high);
  element.current.low = static_cast<std::int32_t>(low);

  std::string text = half_text(high) + half_text(low);
  const std::int32_t decimals = element.settings.decimals;
  if (decimals > 0) {
    const std::string point = element.settings.digits != 0 ? "." : "0.";
    text.insert(text.size() - static_cast<std::size_t>(decimals), point);
  }
  if (sign_written) {
    const bool turning = sub_kind == 12 || sub_kind == 22;
    const bool minus = turning ? sign == 2 : sub_kind == 20 || sub_kind == 21;
    const auto size = static_cast<std::int64_t>(text.size());
    const std::int64_t place =
        std::clamp<std::int64_t>(size - (std::int64_t{element.settings.width} - 1), 0, size);
    text.insert(static_cast<std::size_t>(place), minus ? "-" : "+");
  }
  element.current_text = last_characters(text, element.settings.width);
  return 0;
}

void ReferenceItem::characters(Element& element, std::string& line) {
  line += element.current_text;
  const std::int32_t step = settings_.increment.low;
  FmtValRec& value = element.current;
  value.low += forwards() ? step : -step;
  std::string low_text(field_text(value.low_text));
  if (element.settings.kind == 905) {
    ordinal_to_full_width(value.low, low_text.data(), low_text.size());
  } else {
    const char base = element.settings.kind == 904 ? 'A' : 'a';
    ordinal_to_letters(base, value.low, low_text.data(), low_text.size());
  }
  store_field(value.low_text, low_text);
  const auto position = static_cast<std::size_t>(value.position);
  element.current_text = element.current_text.substr(0, position) + low_text;
}

std::string ReferenceItem::display_text(const Element& element) const {
  const std::string date_separator = layout_kind_ == 2 ? "/" : layout_kind_ == 3 ? "-" : "";
  const std::string time_separator = layout_kind_ == 2 || layout_kind_ == 3 ? ":" : "";
  const FmtItemRec& record = element.settings;
  const int year_digits = record.kind == 907 && record.width == 6 ? 2 : 4;
  return moment_text(record, element.current, year_digits, date_separator, time_separator);
}

void ReferenceItem::moment(Element& element, std::string& line) {
  line += display_text(element);
  switch (element.settings.kind) {
    case 906:
      return step_date(element);
    case 907:
      return step_unchecked_date(element);
    case 1002:
      return step_time(element);
    default:
      return step_timestamp(element);
  }
}

void ReferenceItem::overflow(Element& element) {
  start_again(element);
  date_overflow_ = true;
}

void ReferenceItem::step_date(Element& element) {
  FmtValRec& value = element.current;
  const std::int64_t days = settings_.increment.low;
  const std::string end_text(field_text(element.settings.end_text));
  const bool at_start = backwards() && value.year == 1970 && value.month == 1 && value.day <= days;
  const bool at_end = forwards() && value.year == 2038 && value.month == 1 && value.day + days > 19;
  // Before the first day lies no end value that the checks let pass.
  if (at_start) return overflow(element);
  if (at_end) {
    FmtValRec moved = value;
    moved.day = static_cast<std::uint16_t>(value.day + days);
    if (plain_text(element.settings, moved) > end_text) return overflow(element);
    element.current_text = plain_text(element.settings, value);
    return;
  }
  const Day next = days_later(day_of(value), forwards() ? days : -days);
  if (number_of(next) < 19700101 || number_of(next) > 20380119) return overflow(element);
  set_day(value, next);
  element.current_text = plain_text(element.settings, value);
}

void ReferenceItem::step_unchecked_date(Element& element) {
  const auto days = static_cast<std::int16_t>(settings_.increment.low);
  Day d = day_of(element.current);
  if (forwards()) {
    d.day += days;
    if (d.day > 31) {
      d.day -= 31;
      d.month += 1;
      if (d.month > 12) {
        d.month = 1;
        d.year += 1;
        if (d.year > element.settings.end.year) d.year = element.settings.start.year;
      }
    }
  } else {
    d.day -= days;
    if (d.day < 1) {
      d.day += 31;
      d.month -= 1;
      if (d.month < 1) {
        d.month = 12;
        d.year -= 1;
        if (d.year < element.settings.end.year) d.year = element.settings.start.year;
      }
    }
  }
  set_day(element.current, d);
  element.current_text = plain_text(element.settings, element.current);
}

void ReferenceItem::step_time(Element& element) const {
  const std::int64_t step = forwards() ? settings_.increment.low : -settings_.increment.low;
  std::int64_t second = second_of(element.current) + step;
  while (second < 0) second += 86400;
  while (second >= 86400) second -= 86400;
  set_second(element.current, second);
  element.current_text = plain_text(element.settings, element.current);
}

void ReferenceItem::step_timestamp(Element& element) {
  FmtValRec& value = element.current;
  const std::int64_t step = settings_.increment.low;
  const std::int64_t day = number_of(day_of(value));
  const std::int64_t minute = value.hour * 100LL + value.minute;
  const bool at_start = backwards() && day == 19700101 && minute == 900 && value.second < step;
  const bool at_end = forwards() && day == 20380119 && minute == 314 && value.second + step > 7;
  // Behind either boundary lies no end value that the checks let pass.
  if (at_start || at_end) return overflow(element);

  std::int64_t second = second_of(value) + (forwards() ? step : -step);
  Day next = day_of(value);
  for (; second < 0; second += 86400) next = day_before(next);
  for (; second >= 86400; second -= 86400) next = day_after(next);
  FmtValRec moved = value;
  set_day(moved, next);
  set_second(moved, second);
  const std::string text = plain_text(element.settings, moved);
  if (text < "19700101 090000" || text > "20380119 031407") return overflow(element);
  value = moved;
  element.current_text = text;
}

}  // namespace korvex::test
