#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "values/attributes.h"

// The fixed-layout records of a settings file and the numbers that stand in them.
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
inline constexpr std::int32_t sign_plus = 1;
inline constexpr std::int32_t sign_minus = 2;

// A number is held as two halves of nine decimal digits each.
inline constexpr std::int64_t half_base = 1'000'000'000;
inline constexpr int half_digits = 9;
inline constexpr int max_number_digits = 2 * half_digits;

// What one format element produces.
namespace format_kind {
inline constexpr std::int32_t none = 0;
inline constexpr std::int32_t signed_number = 900;
inline constexpr std::int32_t unsigned_number = 901;
inline constexpr std::int32_t signed_number_simple = 902;
inline constexpr std::int32_t unsigned_number_in_text = 903;
inline constexpr std::int32_t upper_letters = 904;
inline constexpr std::int32_t national_character = 905;
inline constexpr std::int32_t date = 906;
inline constexpr std::int32_t date_unchecked = 907;
inline constexpr std::int32_t lower_letters = 908;
inline constexpr std::int32_t fixed = 999;
inline constexpr std::int32_t time = 1002;
inline constexpr std::int32_t timestamp = 1003;
}  // namespace format_kind

// How a signed number counts, by the signs of start, end and increment.
namespace number_sub_kind {
inline constexpr std::int32_t plus_plus_up = 10;
inline constexpr std::int32_t plus_plus_down = 11;
inline constexpr std::int32_t plus_minus_down = 12;
inline constexpr std::int32_t minus_minus_down = 20;
inline constexpr std::int32_t minus_minus_up = 21;
inline constexpr std::int32_t minus_plus_up = 22;
}  // namespace number_sub_kind

namespace generation_type {
inline constexpr std::int32_t none = 0;
inline constexpr std::int32_t initial_value = 1;
inline constexpr std::int32_t range = 2;
inline constexpr std::int32_t reference = 3;
inline constexpr std::int32_t enumeration = 4;
}  // namespace generation_type

namespace exceeded_action {
inline constexpr std::int32_t initialize = 0;
inline constexpr std::int32_t repeat = 1;
}  // namespace exceeded_action

// What the records describe: a record file, a database table, or the third kind, whose lines end
// without a comma.
namespace layout_kind {
inline constexpr std::int32_t record_file = 1;
inline constexpr std::int32_t table = 2;
inline constexpr std::int32_t iso = 3;
}  // namespace layout_kind

// One parsed start, end, current or increment value.
struct FmtValRec {
  std::int32_t sign;
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
  std::int32_t sequence;
  std::int32_t kind;
  // The signed flag of the item; for a checked signed number its number_sub_kind.
  std::int32_t sign;
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
  std::int32_t group_start;
  char reserved[20];
};

// The settings of one item; `element_count` FmtItemRec follow it in the file.
struct FmtColRec {
  std::int32_t item_number;
  std::int32_t element_count;
  std::int32_t lead_element;
  Attribute attribute;
  std::int32_t signed_flag;
  std::int32_t length;
  std::int32_t digits;
  std::int32_t decimals;
  FmtValRec increment;
  char increment_text[increment_text_size];
  char format[format_text_size];
  std::int32_t exceeded_action;
  std::int32_t generation_type;
  std::int32_t referenced_item;
  std::int32_t custom_format;
  std::int32_t repeat_flag;
  std::int32_t repeat_level;
  std::int32_t repeat_count;
  char enumeration_path[enumeration_path_size];
};

// One level of the file: where its data area stands and what it holds.
struct FmtLvlRec {
  std::int32_t level;
  std::int32_t data_offset;
  std::int32_t records;
  std::int32_t data_size;
  std::int32_t column_count;
  std::int32_t repeat_flag;
  char reserved[8];
};

struct FmtHeadRec {
  char magic[magic_size];
  std::int32_t layout_kind;
  std::int32_t quotation;
  std::int32_t level_count;
  std::int32_t reserved[2];
};

static_assert(sizeof(FmtValRec) == 52 && offsetof(FmtValRec, high) == 24 &&
              offsetof(FmtValRec, year) == 40);
static_assert(sizeof(FmtItemRec) == 608 && offsetof(FmtItemRec, start) == 76 &&
              offsetof(FmtItemRec, text) == 180 && offsetof(FmtItemRec, span_low) == 576);
static_assert(sizeof(FmtColRec) == 660 && offsetof(FmtColRec, increment) == 32 &&
              offsetof(FmtColRec, format) == 108 && offsetof(FmtColRec, repeat_flag) == 380);
static_assert(sizeof(FmtLvlRec) == 32 && sizeof(FmtHeadRec) == 44);

}  // namespace korvex
