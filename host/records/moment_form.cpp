#include "host/records/moment_form.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <string>

#include "platform/text_lines.h"
#include "values/attributes.h"

namespace korvex::host {

namespace {

constexpr std::size_t iso_date_size = 10;
constexpr std::size_t iso_time_size = 8;
constexpr int first_year_of_1900s = 70;  // of two digits: 70 to 99, the others are of 2000

// The digits of a moment in groups of so many. Between the groups may be one character. False
// when the text is something else.
template <std::size_t... Sizes>
bool find_groups(std::string_view text, std::array<const char*, sizeof...(Sizes)>& groups) {
  const char* next = text.data();
  const char* const end = next + text.size();
  bool has_digits = true;
  std::size_t group = 0;
  const auto take = [&](std::size_t size) {
    if (group > 0 && next < end && !platform::is_digit(*next)) ++next;
    if (static_cast<std::size_t>(end - next) < size) return false;
    groups[group++] = next;
    for (const char* const begin = next; next < begin + size; ++next) {
      has_digits = has_digits & platform::is_digit(*next);
    }
    return true;
  };
  return (take(Sizes) && ...) && has_digits && next == end;
}

char* put(char* out, const char* digits, std::size_t count, char separator) {
  std::memcpy(out, digits, count);
  out += count;
  if (separator != '\0') *out++ = separator;
  return out;
}

// The usual form, told without a loop: four, two and two digits.
bool find_plain_date(std::string_view text, std::array<const char*, 3>& groups) {
  constexpr std::uint64_t zeros = 0x3030303030303030;
  constexpr std::uint64_t upper_halves = 0xF0F0F0F0F0F0F0F0;
  constexpr std::uint64_t beyond_nine = 0x0606060606060606;  // carries from 10 on
  std::uint64_t word = 0;
  if (text.size() != sizeof word) return false;
  std::memcpy(&word, text.data(), sizeof word);
  groups = {text.data(), text.data() + 4, text.data() + 6};
  return (word & upper_halves) == zeros && ((word + beyond_nine) & upper_halves) == zeros;
}

bool write_date(std::string_view text, char* out) {
  std::array<const char*, 3> parts;
  if (find_plain_date(text, parts) || find_groups<4, 2, 2>(text, parts)) {
    out = put(out, parts[0], 4, '-');
  } else if (find_groups<2, 2, 2>(text, parts)) {
    const int year = platform::number_of_digits<int>({parts[0], 2});
    out = put(out, year >= first_year_of_1900s ? "19" : "20", 2, '\0');
    out = put(out, parts[0], 2, '-');
  } else {
    return false;
  }
  out = put(out, parts[1], 2, '-');
  put(out, parts[2], 2, '\0');
  return true;
}

bool write_time(std::string_view text, char* out) {
  std::array<const char*, 3> parts;
  if (!find_groups<2, 2, 2>(text, parts)) return false;
  out = put(out, parts[0], 2, ':');
  out = put(out, parts[1], 2, ':');
  put(out, parts[2], 2, '\0');
  return true;
}

bool write_timestamp(std::string_view text, char* out) {
  const std::size_t space = text.find(' ');
  if (space == std::string_view::npos || !write_date(text.substr(0, space), out)) return false;
  out[iso_date_size] = ' ';
  return write_time(text.substr(space + 1), out + iso_date_size + 1);
}

std::size_t size_of(MomentForm form) {
  switch (form) {
    case MomentForm::iso_date:
      return iso_date_size;
    case MomentForm::iso_time:
      return iso_time_size;
    default:
      return iso_date_size + 1 + iso_time_size;
  }
}

bool holds_numbers(ColumnType type) {
  return type == ColumnType::integer16 || type == ColumnType::integer32 ||
         type == ColumnType::integer64 || type == ColumnType::decimal ||
         type == ColumnType::floating4 || type == ColumnType::floating8;
}

}  // namespace

MomentForm moment_form(Attribute attribute) {
  switch (attribute) {
    case korvex::attribute::date:
      return MomentForm::iso_date;
    case korvex::attribute::time:
      return MomentForm::iso_time;
    case korvex::attribute::timestamp:
      return MomentForm::iso_timestamp;
    default:
      return MomentForm::as_it_is;
  }
}

MomentForm column_form(Attribute attribute, const ColumnSchema& column) {
  const MomentForm form = moment_form(attribute);
  const bool is_short = column.type == ColumnType::text && column.length > 0 &&
                        static_cast<std::size_t>(column.length) < size_of(form);
  return is_short || holds_numbers(column.type) ? MomentForm::as_it_is : form;
}

std::size_t write_moment(MomentForm form, std::string_view value, char* out) {
  bool is_moment = false;
  switch (form) {
    case MomentForm::as_it_is:
      break;
    case MomentForm::iso_date:
      is_moment = write_date(value, out);
      break;
    case MomentForm::iso_time:
      is_moment = write_time(value, out);
      break;
    case MomentForm::iso_timestamp:
      is_moment = write_timestamp(value, out);
      break;
  }
  return is_moment ? size_of(form) : 0;
}

std::string_view MomentText::convert(MomentForm form, std::string_view value) {
  const std::size_t size = value.empty() ? 0 : write_moment(form, value, text_.data());
  return size > 0 ? std::string_view(text_.data(), size) : value;
}

std::optional<MomentNumbers> moment_numbers(MomentForm form, std::string_view value) {
  MomentText converter;
  std::string_view text = converter.convert(form, value);
  // What is no moment comes back as it is.
  if (text.data() == value.data()) return std::nullopt;
  const auto take = [&](std::size_t digits) {
    const int number = platform::number_of_digits<int>(text.substr(0, digits));
    text.remove_prefix(std::min(digits + 1, text.size()));
    return number;
  };
  MomentNumbers numbers;
  if (form != MomentForm::iso_time) {
    numbers.year = take(4);
    numbers.month = static_cast<unsigned>(take(2));
    numbers.day = static_cast<unsigned>(take(2));
  }
  if (form != MomentForm::iso_date) {
    numbers.hour = take(2);
    numbers.minute = take(2);
    numbers.second = take(2);
  }
  return numbers;
}

namespace {

using Date = std::chrono::year_month_day;

constexpr std::int64_t seconds_a_day = 24 * 60 * 60;

const std::chrono::sys_days first_day =
    Date(std::chrono::year(1), std::chrono::January, std::chrono::day(1));
const std::chrono::sys_days last_day =
    Date(std::chrono::year(9999), std::chrono::December, std::chrono::day(31));

std::optional<std::int64_t> day_of(const MomentNumbers& moment) {
  const Date date(std::chrono::year(moment.year), std::chrono::month(moment.month),
                  std::chrono::day(moment.day));
  if (!date.ok()) return std::nullopt;
  return std::chrono::sys_days(date).time_since_epoch().count();
}

std::optional<std::int64_t> second_of(const MomentNumbers& moment) {
  if (moment.hour > 23 || moment.minute > 59 || moment.second > 59) return std::nullopt;
  return (moment.hour * 60 + moment.minute) * 60 + moment.second;
}

// How moments of a kind of layout are written: what is between digits, or nothing.
struct Separators {
  std::string_view date;
  std::string_view time;
};

Separators separators_of(LayoutKind layout_kind) {
  if (layout_kind == layout_kind::record_file) return {"", ""};
  return {layout_kind == layout_kind::iso ? "-" : "/", ":"};
}

void append_digits(unsigned number, std::size_t count, std::string& out) {
  const std::size_t begin = out.size();
  out.resize(begin + count);
  for (std::size_t i = begin + count; i > begin; number /= 10) {
    out[--i] = static_cast<char>('0' + number % 10);
  }
}

bool append_date(std::int64_t days, std::string_view separator, std::string& out) {
  if (days < first_day.time_since_epoch().count() || days > last_day.time_since_epoch().count()) {
    return false;
  }
  const Date date{std::chrono::sys_days{std::chrono::days{days}}};
  append_digits(static_cast<unsigned>(static_cast<int>(date.year())), 4, out);
  out += separator;
  append_digits(static_cast<unsigned>(date.month()), 2, out);
  out += separator;
  append_digits(static_cast<unsigned>(date.day()), 2, out);
  return true;
}

// After the last second of a day comes the first, as on a clock.
std::int64_t second_of_day(std::int64_t seconds) {
  return (seconds % seconds_a_day + seconds_a_day) % seconds_a_day;
}

void append_time(std::int64_t seconds, std::string_view separator, std::string& out) {
  const auto second = static_cast<unsigned>(second_of_day(seconds));
  append_digits(second / 3600, 2, out);
  out += separator;
  append_digits(second / 60 % 60, 2, out);
  out += separator;
  append_digits(second % 60, 2, out);
}

class MomentScale : public sources::Scale {
 public:
  MomentScale(MomentForm form, LayoutKind layout_kind)
      : form_(form), separators_(separators_of(layout_kind)) {}

  sources::ScaleKind kind() const override {
    switch (form_) {
      case MomentForm::iso_date:
        return sources::ScaleKind::date;
      case MomentForm::iso_time:
        return sources::ScaleKind::time;
      default:
        return sources::ScaleKind::timestamp;
    }
  }

  std::optional<std::int64_t> read(std::string_view text) const override {
    const auto moment = moment_numbers(form_, text);
    if (!moment) return std::nullopt;
    if (form_ == MomentForm::iso_date) return day_of(*moment);
    if (form_ == MomentForm::iso_time) return second_of(*moment);
    const auto day = day_of(*moment);
    const auto second = second_of(*moment);
    if (!day || !second) return std::nullopt;
    return *day * seconds_a_day + *second;
  }

  bool append(std::int64_t number, std::string& out) const override {
    if (form_ == MomentForm::iso_date) return append_date(number, separators_.date, out);
    if (form_ == MomentForm::iso_time) {
      append_time(number, separators_.time, out);
      return true;
    }
    const std::int64_t second = second_of_day(number);
    if (!append_date((number - second) / seconds_a_day, separators_.date, out)) return false;
    out += ' ';
    append_time(second, separators_.time, out);
    return true;
  }

 private:
  MomentForm form_;
  Separators separators_;
};

}  // namespace

std::unique_ptr<sources::Scale> moment_scale(MomentForm form, LayoutKind layout_kind) {
  return std::make_unique<MomentScale>(form, layout_kind);
}

}  // namespace korvex::host
