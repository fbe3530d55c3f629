#include "courses/moment_text.h"

#include <cstdio>

#include "courses/digit_pairs.h"
#include "values/number_text.h"

namespace korvex {

namespace {

constexpr std::int32_t short_width = 6;

// After every date with a century: two-digit years that belong to none compare as they stand.
constexpr std::int64_t no_century = 1'000'000'000;

std::int64_t with_century(std::int64_t short_date) {
  const std::int64_t year = short_date / 10'000;
  if (year >= 70) return 19'000'000 + short_date;
  return year <= 38 ? 20'000'000 + short_date : no_century + short_date;
}

std::int64_t date_number(const MomentFields& f) {
  return std::int64_t{f.year} * 10'000 + std::int64_t{f.month} * 100 + f.day;
}

std::int64_t time_number(const MomentFields& f) {
  return std::int64_t{f.hour} * 10'000 + std::int64_t{f.minute} * 100 + f.second;
}

bool all_digits(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

char* write_separated(char* out, char separator, int value) {
  if (separator != 0) *out++ = separator;
  write_pair(out, static_cast<std::uint32_t>(value));
  return out + 2;
}

}  // namespace

MomentFields fields_of(const FmtValRec& value) {
  return {value.year, value.month, value.day, value.hour, value.minute, value.second};
}

MomentLayout::MomentLayout(FormatKind kind, std::int32_t width, LayoutKind layout)
    : has_date_(kind != format_kind::time),
      has_time_(kind == format_kind::time || kind == format_kind::timestamp),
      width_is_short_(width == short_width) {
  short_year_ = width_is_short_ && !has_time_;
  year_is_short_ = short_year_ && kind == format_kind::date_unchecked;
  if (layout == layout_kind::table) date_separator_ = '/';
  if (layout == layout_kind::iso) date_separator_ = '-';
  if (date_separator_ != 0) time_separator_ = ':';
}

bool MomentLayout::fits_places(const MomentFields& f) const {
  const auto fits = [](int value, unsigned most) { return static_cast<unsigned>(value) <= most; };
  return fits(f.year, year_is_short_ ? 99 : 9999) && fits(f.month, 99) && fits(f.day, 99) &&
         fits(f.hour, 99) && fits(f.minute, 99) && fits(f.second, 99);
}

std::size_t MomentLayout::write_display(const MomentFields& f, char* out) const {
  if (!fits_places(f)) return print_display(f, out);
  char* end = out;
  if (has_date_) {
    if (!short_year_) {
      write_pair(end, static_cast<std::uint32_t>(f.year) / 100);
      end += 2;
    }
    write_pair(end, static_cast<std::uint32_t>(f.year) % 100);
    end = write_separated(end + 2, date_separator_, f.month);
    end = write_separated(end, date_separator_, f.day);
    if (has_time_) *end++ = ' ';
  }
  if (has_time_) {
    write_pair(end, static_cast<std::uint32_t>(f.hour));
    end = write_separated(end + 2, time_separator_, f.minute);
    end = write_separated(end, time_separator_, f.second);
  }
  return static_cast<std::size_t>(end - out);
}

// The same for fields that outgrow their places, as a printed format would give it.
std::size_t MomentLayout::print_display(const MomentFields& f, char* out) const {
  const char date_text[] = {date_separator_, 0};
  const char time_text[] = {time_separator_, 0};
  int size = 0;
  if (has_date_) {
    size = std::snprintf(out, max_size, year_is_short_ ? "%02d%s%02d%s%02d" : "%04d%s%02d%s%02d",
                         f.year, date_text, f.month, date_text, f.day);
    if (has_time_) out[size++] = ' ';
  }
  if (has_time_) {
    size += std::snprintf(out + size, max_size - static_cast<std::size_t>(size), "%02d%s%02d%s%02d",
                          f.hour, time_text, f.minute, time_text, f.second);
  }
  const std::string text(out, static_cast<std::size_t>(size));
  const std::size_t cut = short_year_ && !year_is_short_ ? 2 : 0;
  return text.copy(out, max_size, cut);
}

std::string MomentLayout::plain_text(const MomentFields& f) const {
  char text[max_size];
  std::string plain;
  if (has_date_) {
    std::snprintf(text, sizeof text, "%04d%02d%02d", f.year, f.month, f.day);
    plain = short_year_ ? text + 2 : text;
    if (has_time_) plain += ' ';
  }
  if (has_time_) {
    std::snprintf(text, sizeof text, "%02d%02d%02d", f.hour, f.minute, f.second);
    plain += text;
  }
  return plain;
}

std::int64_t MomentLayout::order_key(const MomentFields& f) const {
  if (!fits_places(f)) return -1;
  if (!has_date_) return width_is_short_ ? with_century(time_number(f)) : time_number(f);
  if (has_time_) return date_number(f) * 1'000'000 + time_number(f);
  return short_year_ ? with_century(date_number(f) % 1'000'000) : date_number(f);
}

std::int64_t MomentLayout::order_key(std::string_view plain) const {
  if (has_date_ && has_time_) {
    const bool regular = plain.size() == 15 && plain[8] == ' ' && all_digits(plain.substr(0, 8)) &&
                         all_digits(plain.substr(9));
    return regular
               ? decimal_prefix(plain.substr(0, 8)) * 1'000'000 + decimal_prefix(plain.substr(9))
               : -1;
  }
  const std::size_t size = !has_date_ || short_year_ ? 6 : 8;
  if (plain.size() != size || !all_digits(plain)) return -1;
  return width_is_short_ ? with_century(decimal_prefix(plain)) : decimal_prefix(plain);
}

}  // namespace korvex
