#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "host/databases/table_schema.h"
#include "host/sources/scale.h"
#include "values/attributes.h"
#include "values/records.h"

namespace korvex::host {

// How the text of a field changes on its way into a column.
enum class MomentForm {
  as_it_is,
  iso_date,       // "20240229", "2024/02/29", "240229" or "24/02/29" to "2024-02-29"
  iso_time,       // "235959" to "23:59:59"
  iso_timestamp,  // "20240229 235959" or "2024/02/29 23:59:59" to "2024-02-29 23:59:59"
};

// The form of a date, time or timestamp by its attribute; others stay as they are.
MomentForm moment_form(Attribute attribute);

// The form for an item of the attribute in a column: moments become what databases read, unless the
// column has no room for that or holds numbers, where the text stays as it would be in a file.
MomentForm column_form(Attribute attribute, const ColumnSchema& column);

constexpr std::size_t longest_moment = 19;

// Writes a moment's text in another form, in so many bytes, for which there must be room; 0 when
// the value is no such moment.
std::size_t write_moment(MomentForm form, std::string_view value, char* out);

// A moment's text in another form.
class MomentText {
 public:
  // The value in the form, or as it is when it is no such moment: then the database decides. The
  // answer is a view of the value or of this object, valid until the next call.
  std::string_view convert(MomentForm form, std::string_view value);

 private:
  std::array<char, longest_moment> text_;
};

// What the digits of a moment say: its day need not be in the calendar, nor its time on the clock.
// A form without a day has the first one that is counted.
struct MomentNumbers {
  int year = 1970;
  unsigned month = 1;
  unsigned day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// The numbers of a value that can be put into the form, as far as the form has them; nothing for
// any other.
std::optional<MomentNumbers> moment_numbers(MomentForm form, std::string_view value);

// Dates as days, times and timestamps as seconds. Reads and writes as the engine does in a kind of
// layout, years with four digits.
std::unique_ptr<sources::Scale> moment_scale(MomentForm form, LayoutKind layout_kind);

}  // namespace korvex::host
