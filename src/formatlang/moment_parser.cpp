#include <algorithm>
#include <chrono>

#include "formatlang/value_parser.h"
#include "values/error_codes.h"
#include "values/number_text.h"

namespace korvex {

namespace {

// Fields as read, before they are known to fit a 16-bit word.
struct Moment {
  std::int64_t year = 0;
  std::int64_t month = 0;
  std::int64_t day = 0;
  std::int64_t hour = 0;
  std::int64_t minute = 0;
  std::int64_t second = 0;

  std::int64_t date_number() const { return year * 10000 + month * 100 + day; }
  std::int64_t time_number() const { return hour * 10000 + minute * 100 + second; }
};

bool within(std::int64_t value, std::int64_t low, std::int64_t high) {
  return value >= low && value <= high;
}

bool all_digits(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

// `count` characters that begin `from_end` characters before the end, as far as they are there.
std::string_view from_end(std::string_view text, std::size_t offset, std::size_t count) {
  if (offset <= text.size()) return text.substr(text.size() - offset, count);
  const std::size_t absent = offset - text.size();
  return absent >= count ? std::string_view() : text.substr(0, count - absent);
}

std::int64_t number_at(std::string_view text, std::size_t offset, std::size_t count) {
  return offset < text.size() ? decimal_prefix(text.substr(offset, count)) : 0;
}

void store_date(const Moment& moment, FmtValRec& value) {
  value.year = static_cast<std::uint16_t>(moment.year);
  value.month = static_cast<std::uint16_t>(moment.month);
  value.day = static_cast<std::uint16_t>(moment.day);
}

void store_time(const Moment& moment, FmtValRec& value) {
  value.hour = static_cast<std::uint16_t>(moment.hour);
  value.minute = static_cast<std::uint16_t>(moment.minute);
  value.second = static_cast<std::uint16_t>(moment.second);
}

// "YYYYMMDD" or "YYMMDD", all digits; the year as written.
Moment cut_date(std::string_view text) {
  Moment moment;
  moment.year = decimal_prefix(text.substr(0, text.size() - 4));
  moment.month = decimal_prefix(text.substr(text.size() - 4, 2));
  moment.day = decimal_prefix(text.substr(text.size() - 2));
  return moment;
}

// Two-digit years around the turn of the century; 39 to 69 belong to neither side and stay.
std::int64_t widened_year(std::int64_t year) {
  if (within(year, 70, 99)) return 1900 + year;
  if (within(year, 0, 38)) return 2000 + year;
  return year;
}

bool is_calendar_date(const Moment& moment) {
  return std::chrono::year_month_day(std::chrono::year(static_cast<int>(moment.year)),
                                     std::chrono::month(static_cast<unsigned>(moment.month)),
                                     std::chrono::day(static_cast<unsigned>(moment.day)))
      .ok();
}

ErrorCode parse_date(std::string_view text, std::size_t digits, FmtValRec& value) {
  if (text.size() != digits) return error::bad_date_digits;
  if (!all_digits(text)) return error::zero_or_not_numeric;
  Moment moment = cut_date(text);
  if (digits == 6) moment.year = widened_year(moment.year);
  if (moment.day == 0 || moment.month == 0 || moment.year == 0) return error::zero_or_not_numeric;
  if (!within(moment.date_number(), first_date, last_date) || !is_calendar_date(moment)) {
    return error::value_out_of_range;
  }
  store_date(moment, value);
  value.low = static_cast<std::int32_t>(decimal_prefix(text));
  return error::none;
}

ErrorCode parse_unchecked_date(std::string_view text, std::size_t digits, FmtValRec& value) {
  if (text.size() != digits) return error::bad_date_digits;
  if (!all_digits(text)) return error::value_not_numeric;
  const Moment moment = cut_date(text);
  const bool year_may_be_zero = text.substr(0, text.size() - 4) == "00";
  if (moment.day == 0 || moment.month == 0 || (moment.year == 0 && !year_may_be_zero)) {
    return error::zero_or_not_numeric;
  }
  if (moment.day > 31 || moment.month > 12) return error::value_out_of_range;
  store_date(moment, value);
  value.low = static_cast<std::int32_t>(decimal_prefix(text));
  return error::none;
}

bool is_time_of_day(const Moment& moment) {
  return within(moment.hour, 0, 23) && within(moment.minute, 0, 59) && within(moment.second, 0, 59);
}

ErrorCode parse_time(std::string_view text, std::size_t digits, FmtValRec& value) {
  if (text.size() != digits) return error::bad_time_digits;
  if (!all_digits(text)) return error::value_not_numeric;
  Moment moment;
  moment.hour = number_at(text, 0, 2);
  moment.minute = number_at(text, 2, 2);
  moment.second = number_at(text, 4, 2);
  if (!is_time_of_day(moment)) return error::value_out_of_range;
  store_time(moment, value);
  value.low = static_cast<std::int32_t>(decimal_prefix(text));
  return error::none;
}

bool is_in_timestamp_range(const Moment& moment) {
  const std::int64_t date = moment.date_number();
  const std::int64_t time = moment.time_number();
  const bool after_first = date > first_date || (date == first_date && time >= first_date_time);
  const bool before_last = date < last_date || (date == last_date && time <= last_date_time);
  return after_first && before_last;
}

ErrorCode parse_timestamp(std::string_view text, std::size_t digits, FmtValRec& value) {
  if (text.size() > digits) return error::bad_timestamp_digits;
  Moment moment;
  moment.year = number_at(text, 0, 4);
  moment.month = number_at(text, 4, 2);
  moment.day = number_at(text, 6, 2);
  moment.hour = decimal_prefix(from_end(text, 6, 2));
  moment.minute = decimal_prefix(from_end(text, 4, 2));
  moment.second = decimal_prefix(from_end(text, 2, 2));
  if (moment.day == 0 || moment.month == 0 || moment.year == 0) return error::zero_or_not_numeric;
  if (!within(moment.day, 1, 31) || !within(moment.month, 1, 12) ||
      !within(moment.year, 1970, 2038) || !is_time_of_day(moment) ||
      !is_in_timestamp_range(moment)) {
    return error::value_out_of_range;
  }
  store_date(moment, value);
  store_time(moment, value);
  value.high = static_cast<std::int32_t>(moment.date_number());
  value.low = static_cast<std::int32_t>(moment.time_number());
  return error::none;
}

}  // namespace

ErrorCode parse_moment(const FmtItemRec& element, std::string_view text, FmtValRec& value) {
  const auto digits = static_cast<std::size_t>(element.digits);
  switch (element.kind) {
    case format_kind::date:
      return parse_date(text, digits, value);
    case format_kind::date_unchecked:
      return parse_unchecked_date(text, digits, value);
    case format_kind::time:
      return parse_time(text, digits, value);
    default:
      return parse_timestamp(text, digits, value);
  }
}

}  // namespace korvex
