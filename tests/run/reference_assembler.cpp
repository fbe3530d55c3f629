#include "run/reference_assembler.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "support/codes.h"
#include "values/ordinals.h"
#include "values/record_text.h"

namespace korvex::test {

namespace {

using Element = ReferenceItem::Element;
using std::chrono::sys_days;

constexpr std::int32_t out_of_range = -45;
constexpr std::int64_t seconds_per_day = 86400;
constexpr std::int64_t reference_last_day = 24855;  // 2038-01-19
constexpr std::int64_t first_second = 9 * 3600;     // 1970-01-01 09:00
constexpr std::int64_t last_second = reference_last_day * seconds_per_day + 3 * 3600 + 14 * 60 + 7;

bool is_character(std::int32_t kind) { return kind == 904 || kind == 905 || kind == 908; }
bool is_moment(std::int32_t kind) {
  return kind == 906 || kind == 907 || kind == 1002 || kind == 1003;
}
bool forwards(const ReferenceItem& item) { return item.settings.increment.sign == 1; }
bool is_lead(const ReferenceItem& item, const Element& element) {
  return element.settings.kind != 999 && element.settings.sequence == item.settings.lead_element;
}

std::string padded(std::int64_t value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%0*lld", digits, static_cast<long long>(value));
  return text;
}

std::string last_characters(const std::string& text, std::int32_t count) {
  const auto size = static_cast<std::size_t>(std::max(count, 0));
  return text.size() > size ? text.substr(text.size() - size) : text;
}

bool greater(const FmtValRec& a, const FmtValRec& b) {
  return a.high > b.high || (a.high == b.high && a.low > b.low);
}

void start_again(Element& element) {
  element.text = field_text(element.settings.start_text);
  element.current = element.settings.start;
}

// A column that is nothing but decimals drops what is before the point.
std::string shown_number(const ReferenceItem& item, const std::string& text) {
  const auto point = text.rfind('.');
  const bool is_fraction = item.settings.digits == item.settings.decimals;
  if (item.layout_kind == 1 || !is_fraction || point == std::string::npos) return text;
  const auto has = [&](char sign) { return text.find(sign) != std::string::npos; };
  return (has('+') ? "+" : has('-') ? "-" : "") + text.substr(point);
}

// Steps the two halves of a magnitude; after zero the other sign begins.
std::int32_t step_number(const FmtValRec& increment, std::int32_t sub_kind, FmtValRec& value) {
  std::int64_t low = value.low;
  std::int64_t high = value.high;
  const auto borrow = [&] {
    high -= 1;
    low += half_base;
  };
  if (sub_kind == 10 || sub_kind == 20 || (sub_kind == 12 && value.sign == 2) ||
      (sub_kind == 22 && value.sign == 1)) {
    low += increment.low;
    high += increment.high;
    if (low >= half_base) {
      high += 1;
      low -= half_base;
    }
    if (high >= half_base) return out_of_range;
  } else {
    low -= increment.low;
    high -= increment.high;
    if (sub_kind == 11 || sub_kind == 21) {
      if (low < 0 && high <= 0) return out_of_range;
      if (low < 0) borrow();
    } else {
      if (high < 0 || (high == 0 && low < 0)) {
        value.sign = sub_kind == 12 ? Sign::minus : Sign::plus;
        high = -high;
        low = -low;
      }
      if (low < 0) borrow();
      if (sub_kind == 22 && high == 0 && low == 0) value.sign = Sign::plus;
    }
  }
  value.low = static_cast<std::int32_t>(low);
  value.high = static_cast<std::int32_t>(high);
  return value.low == low && value.high == high ? 0 : out_of_range;
}

std::int32_t number(const ReferenceItem& item, Element& element, std::string& line) {
  const FmtItemRec& settings = element.settings;
  const bool has_sign = settings.kind == 900 || settings.kind == 902;
  const std::int32_t sub_kind = has_sign ? number_of(settings.sign) : forwards(item) ? 10 : 11;
  line += shown_number(item, element.text);
  const std::int32_t result = step_number(item.settings.increment, sub_kind, element.current);
  if (result != 0) return result;

  const auto half_text = [](std::int32_t half) {
    const std::string text = std::to_string(half);
    return text.size() < 9 ? std::string(9 - text.size(), '0') + text : text;
  };
  std::string text = half_text(element.current.high) + half_text(element.current.low);
  if (settings.decimals > 0) {
    text.insert(text.size() - static_cast<std::size_t>(settings.decimals),
                settings.digits != 0 ? "." : "0.");
  }
  if (has_sign) {
    const bool turns = sub_kind == 12 || sub_kind == 22;
    const bool minus = turns ? element.current.sign == 2 : sub_kind >= 20;
    const auto size = static_cast<std::int64_t>(text.size());
    const auto place = std::clamp<std::int64_t>(size - settings.width + 1, 0, size);
    text.insert(static_cast<std::size_t>(place), minus ? "-" : "+");
  }
  element.text = last_characters(text, settings.width);
  return 0;
}

void characters(const ReferenceItem& item, Element& element, std::string& line) {
  line += element.text;
  FmtValRec& value = element.current;
  value.low += forwards(item) ? item.settings.increment.low : -item.settings.increment.low;
  std::string text(field_text(value.low_text));
  if (element.settings.kind == 905) {
    ordinal_to_full_width(value.low, text.data(), text.size());
  } else {
    ordinal_to_letters(element.settings.kind == 904 ? 'A' : 'a', value.low, text.data(),
                       text.size());
  }
  store_field(value.low_text, text);
  element.text.replace(static_cast<std::size_t>(value.position), std::string::npos, text);
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
std::string plain_text(const Element& element) {
  return moment_text(element.settings, element.current, 4, "", "");
}

std::string with_century(const FmtItemRec& element, const std::string& text) {
  if (element.width != 6) return text;
  const int year = std::atoi(text.substr(0, 2).c_str());
  return (year >= 70 ? "19" : year <= 38 ? "20" : "") + text;
}

std::int64_t day_of(const FmtValRec& value) {
  const sys_days day = std::chrono::year(value.year) / std::chrono::month(value.month) / value.day;
  return day.time_since_epoch().count();
}
std::int64_t second_of(const FmtValRec& value) {
  return value.hour * 3600LL + value.minute * 60 + value.second;
}

void set_date(FmtValRec& value, std::int64_t year, std::int64_t month, std::int64_t day) {
  value.year = static_cast<std::uint16_t>(year);
  value.month = static_cast<std::uint16_t>(month);
  value.day = static_cast<std::uint16_t>(day);
}
void set_day(FmtValRec& value, std::int64_t day) {
  const std::chrono::year_month_day date{sys_days(std::chrono::days(day))};
  set_date(value, static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
           static_cast<unsigned>(date.day()));
}
void set_second(FmtValRec& value, std::int64_t second) {
  value.hour = static_cast<std::uint16_t>(second / 3600);
  value.minute = static_cast<std::uint16_t>(second / 60 % 60);
  value.second = static_cast<std::uint16_t>(second % 60);
}

// Where the calendar ends the element starts again, false, and so does whatever leads after it.
bool step_date(std::int64_t days, Element& element) {
  FmtValRec& value = element.current;
  if (days > 0 && value.year == 2038 && value.month == 1 && value.day + days > 19) {
    Element moved = element;
    moved.current.day = static_cast<std::uint16_t>(value.day + days);
    if (plain_text(moved) <= field_text(element.settings.end_text)) return true;
  }
  const std::int64_t next = day_of(value) + days;
  if (next < 0 || next > reference_last_day) return false;
  set_day(value, next);
  return true;
}

bool step_timestamp(std::int64_t seconds, FmtValRec& value) {
  const std::int64_t next = day_of(value) * seconds_per_day + second_of(value) + seconds;
  if (next < first_second || next > last_second) return false;
  set_day(value, next / seconds_per_day);
  set_second(value, next % seconds_per_day);
  return true;
}

// Every month has 31 days, and after the end's year comes the start's.
void step_unchecked_date(std::int64_t days, Element& element) {
  const int way = days > 0 ? 1 : -1;
  std::int64_t year = element.current.year;
  std::int64_t month = element.current.month;
  std::int64_t day = element.current.day + days;
  if (way > 0 ? day > 31 : day < 1) {
    day -= way * 31;
    month += way;
    if (month > 12 || month < 1) {
      month -= way * 12;
      year += way;
      if (way * (year - element.settings.end.year) > 0) year = element.settings.start.year;
    }
  }
  set_date(element.current, year, month, day);
}

void moment(ReferenceItem& item, Element& element, std::string& line) {
  const std::int32_t kind = number_of(element.settings.kind);
  const std::string date_separator = item.layout_kind == 2 ? "/" : item.layout_kind == 3 ? "-" : "";
  const int year_digits = kind == 907 && element.settings.width == 6 ? 2 : 4;
  line += moment_text(element.settings, element.current, year_digits, date_separator,
                      date_separator.empty() ? "" : ":");
  const std::int64_t step = item.settings.increment.low * (forwards(item) ? 1LL : -1LL);
  bool is_going = true;
  if (kind == 906) is_going = step_date(step, element);
  if (kind == 907) step_unchecked_date(step, element);
  if (kind == 1003) is_going = step_timestamp(step, element.current);
  if (kind == 1002) {
    const std::int64_t second = (second_of(element.current) + step) % seconds_per_day;
    set_second(element.current, (second + seconds_per_day) % seconds_per_day);
  }
  if (is_going) {
    element.text = plain_text(element);
  } else {
    start_again(element);
    item.date_overflow = true;
  }
}

bool end_passed(const ReferenceItem& item, const Element& element) {
  const FmtItemRec& settings = element.settings;
  const FmtValRec& next = element.current;
  const FmtValRec& end = settings.end;
  if (settings.kind == 900 || settings.kind == 902) {
    if (settings.sign == 10 || settings.sign == 20) return greater(next, end);
    if (settings.sign == 11 || settings.sign == 21) return greater(end, next);
    return next.sign == (settings.sign == 12 ? 2 : 1) && greater(next, end);
  }
  if (settings.kind == 901 || settings.kind == 903) {
    return forwards(item) ? greater(next, end) : greater(end, next);
  }
  if (is_character(number_of(settings.kind))) {
    return forwards(item) ? next.low > end.low : next.low < end.low;
  }
  const std::string text = with_century(settings, element.text);
  const auto start_text = with_century(settings, std::string(field_text(settings.start_text)));
  const auto end_text = with_century(settings, std::string(field_text(settings.end_text)));
  return forwards(item) ? text > end_text || text < start_text
                        : text < end_text || text > start_text;
}

// Writes the element's text and takes its step.
std::int32_t generate(ReferenceItem& item, Element& element, std::string& line) {
  static const std::set<std::int32_t> ways_of_counting = {10, 11, 12, 20, 21, 22};
  const std::int32_t kind = number_of(element.settings.kind);
  const std::int32_t sub_kind = number_of(element.settings.sign);
  if (kind == 900 && !ways_of_counting.contains(sub_kind)) return -40;
  if (kind == 902 && sub_kind != 10 && sub_kind != 11) return -40;
  if (kind >= 900 && kind <= 903) return number(item, element, line);
  if (is_character(kind)) {
    characters(item, element, line);
  } else if (is_moment(kind)) {
    moment(item, element, line);
  } else if (kind == 999) {
    line += element.text;
  } else {
    return -7;
  }
  return 0;
}

}  // namespace

ReferenceItem::ReferenceItem(const ClFmtColInf& column, LayoutKind kind, bool quotes)
    : settings(column.record), layout_kind(kind) {
  static const std::set<std::int32_t> quoted = {1, 2, 3, 11, 12, 28, 31, 32};
  if (quotes && quoted.contains(number_of(settings.attribute))) mark = "\"";
  for (const auto& element : column.elements) {
    const FmtItemRec& record = element->record;
    std::string text(field_text(record.text));
    if (record.kind != 999) {
      const std::int32_t bytes = record.kind == 905 ? 2 * record.width : record.width;
      text = last_characters(std::string(field_text(record.start_text)), bytes);
    }
    elements.push_back({record, record.current, text});
  }
}

// The elements of one field; `is_over` becomes true when the item has passed its end.
std::int32_t ReferenceItem::append_elements(std::string& line, bool& is_over) {
  date_overflow = false;
  for (Element& element : elements) {
    const std::int32_t kind = number_of(element.settings.kind);
    if (element.text.empty()) continue;
    const std::int32_t result = generate(*this, element, line);
    if (result == -7 || result == -40) return result;
    const bool leads = is_lead(*this, element);
    is_over = is_over || result < 0;
    if (result < 0) break;
    if (!leads && is_character(kind) && end_passed(*this, element)) start_again(element);
    if (!leads) continue;
    const bool meets_calendars_end = date_overflow && (kind == 906 || kind == 1003);
    is_over = is_over || meets_calendars_end || end_passed(*this, element);
    if (meets_calendars_end) break;
  }
  return 0;
}

void ReferenceItem::start_elements() {
  for (Element& element : elements) {
    start_again(element);
    if (element.settings.kind == 999) element.text = field_text(element.settings.text);
  }
}

std::int32_t ReferenceItem::append_plain(std::string& line) {
  bool is_over = false;
  if (const std::int32_t result = append_elements(line, is_over); result != 0) return result;
  if (!is_over) return 0;
  start_elements();
  if (settings.exceeded_action == exceeded_action::repeat) return 0;
  for (Element& element : elements) element.text.clear();
  return 0;
}

std::int32_t ReferenceItem::append_repeated(std::string& line, bool waits) {
  if (waits) {
    line += saved;
    return 0;
  }
  saved.clear();
  if (const std::int32_t result = append_elements(saved, wrapped); result != 0) return result;
  line += saved;
  if (wrapped) start_elements();
  return 0;
}

void ReferenceItem::append_listed(std::string& line) {
  if (index == list.size()) {
    if (settings.exceeded_action != exceeded_action::repeat) return;
    index = 0;
  }
  line += list[index++];
}

void ReferenceItem::append_repeated_list(std::string& line, bool waits) {
  if (waits && index > 0) --index;
  if (index == list.size()) return append_listed(line);
  line += list[index++];
  if (index == list.size()) wrapped = true;
}

ReferenceRun::Entry* ReferenceRun::entry_of(const ReferenceItem& item) {
  for (Entry& entry : entries) {
    if (entry.item == &item) return &entry;
  }
  return nullptr;
}

std::int32_t ReferenceRun::append_field(ReferenceItem& item, std::string& line) {
  if (item.settings.generation_type == 1) {
    line += ',';
    return 0;
  }
  Entry* const entry = entry_of(item);
  const bool is_member = entry != nullptr && !is_finished;
  const bool waits = is_member && entry != &entries.back() && !is_first && !entry[1].finished;
  // A list that is in several fields takes its values from its elements.
  const bool is_list = !item.list.empty() && std::count(fields.begin(), fields.end(), &item) == 1;
  std::int32_t result = 0;
  line += item.mark;
  if (entry != nullptr && is_finished && item.settings.exceeded_action != exceeded_action::repeat &&
      (is_list || item.list.empty())) {
    // Nothing: it has run empty.
  } else if (is_list) {
    is_member ? item.append_repeated_list(line, waits) : item.append_listed(line);
  } else if (is_member && item.list.empty()) {
    result = item.append_repeated(line, waits);
  } else {
    result = item.append_plain(line);
  }
  line += item.mark + ",";
  return result;
}

void ReferenceRun::advance() {
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    if (entry == entries.rbegin()) {
      if (!entry->item->wrapped) {
        for (Entry& each : entries) each.finished = false;
        return;
      }
    } else if (!entry->item->wrapped || !entry[-1].finished) {
      return;
    }
    entry->item->wrapped = false;
    entry->item->index = 0;
    if (++entry->done >= entry->count) {
      entry->finished = true;
      entry->done = 0;
    }
    if (&*entry == &entries.front() && entry->finished) is_finished = true;
    if (is_finished) return;
  }
}

std::int32_t ReferenceRun::append_record(std::string& text) {
  std::string line;
  for (ReferenceItem* item : fields) {
    if (const std::int32_t result = append_field(*item, line); result != 0) return result;
  }
  if (fields.front()->layout_kind == 3) line.pop_back();
  text += line + "\n";
  is_first = false;
  if (!entries.empty() && !is_finished) advance();
  return 0;
}

}  // namespace korvex::test
