#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/records.h"

namespace korvex {

// The calendar and clock fields of a value, whatever they hold.
struct MomentFields {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

MomentFields fields_of(const FmtValRec& value);

// How a date, time or timestamp element is laid out in a target.
class MomentLayout {
 public:
  MomentLayout(FormatKind format_kind, std::int32_t width, LayoutKind layout_kind);

  // As the target shows it, with its separators. Writes at most max_size bytes; answers how many.
  std::size_t write_display(const MomentFields& fields, char* out) const;

  // The digits by which values are compared: "YYYYMMDD", "YYMMDD", "HHMMSS" or
  // "YYYYMMDD HHMMSS".
  std::string plain_text(const MomentFields& fields) const;

  // A number that orders as the plain texts do, once a short one has got its century; -1 for
  // fields too large for their places, whose texts only can be compared.
  std::int64_t order_key(const MomentFields& fields) const;

  // The same key of a plain text, or -1.
  std::int64_t order_key(std::string_view plain) const;

  bool compares_with_century() const { return width_is_short_; }

  // What is between month and day, and between minute and second; 0 for nothing.
  char date_separator() const { return date_separator_; }
  char time_separator() const { return time_separator_; }

  static constexpr std::size_t max_size = 64;

 private:
  bool fits_places(const MomentFields& fields) const;
  std::size_t print_display(const MomentFields& fields, char* out) const;

  bool has_date_ = false;
  bool has_time_ = false;
  bool short_year_ = false;     // two digits of the year are written
  bool year_is_short_ = false;  // the year itself has two digits
  bool width_is_short_ = false;
  char date_separator_ = 0;
  char time_separator_ = 0;
};

}  // namespace korvex
