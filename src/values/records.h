#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "korvex/control_file.h"
#include "values/attributes.h"
#include "values/counts.h"

// The fixed-layout records of a settings file and the numbers that are in them. A number from a
// file may be any of 32 bits, whatever its type names.
//
// Records are plain data, written to the file byte for byte: little-endian, packed, texts
// zero-terminated in code page 932 with the rest of their field zero. Whoever reads a record from a
// file must treat every field as untrusted: nothing here is checked on the way in.
namespace korvex {

static_assert(std::endian::native == std::endian::little,
              "records are copied to and from files as they stand in memory");

inline constexpr std::size_t value_text_size = 12;
inline constexpr std::size_t element_text_size = 132;
inline constexpr std::size_t increment_text_size = 24;
inline constexpr std::size_t format_text_size = 256;
inline constexpr std::size_t enumeration_path_size = 268;
inline constexpr std::size_t magic_size = 24;

// Signs of a value and directions of an increment.
enum class Sign : std::int32_t { plus = 1, minus = 2 };

// A number is held as two halves of nine decimal digits each.
inline constexpr std::int64_t half_base = 1'000'000'000;
inline constexpr int half_digits = 9;
inline constexpr int max_number_digits = KORVEX_MAX_DIGITS;
static_assert(max_number_digits == 2 * half_digits);

// What one format element produces.
enum class FormatKind : std::int32_t {
  none = 0,
  signed_number = 900,
  unsigned_number = 901,
  signed_number_simple = 902,
  unsigned_number_in_text = 903,
  upper_letters = 904,
  national_character = 905,
  date = 906,
  date_unchecked = 907,
  lower_letters = 908,
  fixed = 999,
  time = 1002,
  timestamp = 1003,
};
namespace format_kind {
using enum FormatKind;
}

// How a signed number counts, by the signs of start, end and increment. Before its values are
// checked, and for elements of other kinds: whether the item has a sign.
enum class NumberSubKind : std::int32_t {
  without_sign = 0,
  with_sign = 1,
  plus_plus_up = 10,
  plus_plus_down = 11,
  plus_minus_down = 12,
  minus_minus_down = 20,
  minus_minus_up = 21,
  minus_plus_up = 22,
};
namespace number_sub_kind {
using enum NumberSubKind;
}

enum class GenerationType : std::int32_t {
  none = 0,
  initial_value = 1,
  range = 2,
  reference = 3,
  enumeration = 4,
};
namespace generation_type {
using enum GenerationType;
}

enum class ExceededAction : std::int32_t {
  initialize = 0,
  repeat = 1,
};
namespace exceeded_action {
using enum ExceededAction;
}

// What the records describe: a record file, a database table, or the third kind, whose lines end
// without a comma.
enum class LayoutKind : std::int32_t {
  record_file = korvex_layout_record_file,
  table = korvex_layout_table,
  iso = korvex_layout_iso,
};
namespace layout_kind {
using enum LayoutKind;
}

// A settings file holds one set of settings for each of its levels.
enum class SettingsLevel : std::int32_t {};

// How the repeats of items nest: those of the outermost level turn last.
enum class RepeatLevel : std::int32_t { none = 0, outermost = 1 };

// What is around the values of quoted attributes.
enum class Quotation : std::int32_t {
  none = 0,
  double_mark = 1,
};
namespace quotation {
using enum Quotation;
}

// Where an element is in its format.
enum class ElementNumber : std::int32_t { none = 0, first = 1 };

constexpr ElementNumber element_number(std::size_t index) {
  return static_cast<ElementNumber>(index + 1);
}

// One parsed start, end, current or increment value.
struct FmtValRec {
  Sign sign;
  // Numbers: index of the decimal point in the text as entered. Characters: byte at which the
  // counting part begins.
  std::int32_t position;
  std::int32_t low;
  char low_text[value_text_size];
  std::int32_t high;
  char high_text[value_text_size];
  std::uint16_t year;
  std::uint16_t month;
  std::uint16_t day;
  std::uint16_t hour;
  std::uint16_t minute;
  std::uint16_t second;
};

// One format element.
struct FmtItemRec {
  ElementNumber sequence;
  FormatKind kind;
  NumberSubKind sign;
  std::int32_t width;
  std::int32_t digits;
  std::int32_t decimals;
  FmtValRec current;
  FmtValRec start;
  FmtValRec end;
  char text[element_text_size];
  char start_text[element_text_size];
  char end_text[element_text_size];
  std::int32_t span_low;
  std::int32_t span_high;
  Flag group_start;
  char reserved[20];
};

// The settings of one item; `element_count` FmtItemRec follow it in the file.
struct FmtColRec {
  ItemNumber item_number;
  std::int32_t element_count;
  ElementNumber lead_element;
  Attribute attribute;
  Flag signed_flag;
  std::int32_t length;
  std::int32_t digits;
  std::int32_t decimals;
  FmtValRec increment;
  char increment_text[increment_text_size];
  char format[format_text_size];
  ExceededAction exceeded_action;
  GenerationType generation_type;
  ItemNumber referenced_item;
  Flag custom_format;
  Flag repeat_flag;
  RepeatLevel repeat_level;
  std::int32_t repeat_count;
  char enumeration_path[enumeration_path_size];
};

// One level of the file: where its data area is and what it holds.
struct FmtLvlRec {
  SettingsLevel level;
  std::int32_t data_offset;
  StoredRecords records;
  std::int32_t data_size;
  std::int32_t column_count;
  std::int32_t repeat_flag;  // how many items are repeated
  char reserved[8];
};

struct FmtHeadRec {
  char magic[magic_size];
  LayoutKind layout_kind;
  Quotation quotation;
  std::int32_t level_count;
  std::int32_t reserved[2];
};

// What the item was when it got its settings.
constexpr ItemAttributes attributes_of(const FmtColRec& settings) {
  return {settings.attribute, settings.signed_flag, settings.length, settings.digits,
          settings.decimals};
}

static_assert(sizeof(FmtValRec) == 52 && offsetof(FmtValRec, high) == 24 &&
              offsetof(FmtValRec, year) == 40);
static_assert(sizeof(FmtItemRec) == 608 && offsetof(FmtItemRec, start) == 76 &&
              offsetof(FmtItemRec, text) == 180 && offsetof(FmtItemRec, span_low) == 576);
static_assert(sizeof(FmtColRec) == 660 && offsetof(FmtColRec, increment) == 32 &&
              offsetof(FmtColRec, format) == 108 && offsetof(FmtColRec, repeat_flag) == 380);
static_assert(sizeof(FmtLvlRec) == 32 && sizeof(FmtHeadRec) == 44);

}  // namespace korvex
