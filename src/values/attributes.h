#pragma once

#include <compare>
#include <cstdint>

#include "korvex/control_file.h"
#include "values/number_of.h"

namespace korvex {

// Attributes, 1 to 32, say what kind of data an item holds. The ones that code mentions by
// themselves have a name; what is known of all of them is in one table, see traits_of. One that
// comes from outside may be any number of 32 bits.
//
// Enumerators are said through a namespace, attribute::date: short where they are used, and yet no
// numbers that pass for others.
enum class Attribute : std::int32_t {
  none = 0,
  character = korvex_attribute_character,
  decimal = korvex_attribute_decimal,
  plain_character = korvex_attribute_plain_character,
  national = korvex_attribute_national,
  number = korvex_attribute_number,
  integer = korvex_attribute_integer,
  small_integer = korvex_attribute_small_integer,
  date = korvex_attribute_date,
  time = korvex_attribute_time,
  timestamp = korvex_attribute_timestamp,
  highest = korvex_attribute_highest,
};
namespace attribute {
using enum Attribute;
}

// What an item is called by in files, which is not its place among the items.
enum class ItemNumber : std::int32_t { none = 0 };

// A yes or no of a file. One that comes from outside may be any number of 32 bits, of which all but
// 0 are a yes where nothing else is said.
enum class Flag : std::int32_t { off = 0, on = 1 };

constexpr bool is_on(Flag flag) { return flag != Flag::off; }
constexpr Flag flag_of(bool is_on) { return is_on ? Flag::on : Flag::off; }

// What an item is, as the control file says.
struct ItemAttributes {
  Attribute attribute = attribute::none;
  Flag signed_flag = Flag::off;
  std::int32_t length = 0;    // bytes
  std::int32_t digits = 0;    // digits or characters
  std::int32_t decimals = 0;  // of the digits

  friend auto operator<=>(const ItemAttributes&, const ItemAttributes&) = default;
};

// The value class of an attribute, which decides how formats and values are read. The numbers are
// the format kinds of the same name.
enum class ValueClass : std::int32_t {
  none = 0,  // takes no format
  numeric = 900,
  character = 904,
  national = 905,
  date = 906,
  time = 1002,
  timestamp = 1003,
};

// What decides the formats that are proposed and the values that a list may have.
enum class DataKind : std::uint8_t {
  none,
  character,
  national,
  decimal,
  number_or_text,  // text where the item has no digits
  bare_number,     // nothing is proposed, and no list is taken
  date,
  time,
  timestamp,
};

// The text that stands for the largest value, where an end value is left out.
enum class LargestValue : std::uint8_t { none, small_letters, full_width_letters, digits, number };

// How many parts of a kind a format may have in the dialogs.
enum class FormatLimit : std::uint8_t { none, text, number, number_or_text, moment };

struct AttributeTraits {
  ValueClass value_class;
  DataKind kind;
  bool is_quoted;         // values are between quotation marks when the file asks for them
  bool is_always_signed;  // whatever the control file says
  bool checks_digits;     // nothing is proposed where digits and decimals do not go together
  LargestValue largest;
  FormatLimit limit;
};

// What is known of an attribute; of a code that is none, what holds for nothing.
const AttributeTraits& traits_of(Attribute attribute);

inline ValueClass value_class_of(Attribute attribute) { return traits_of(attribute).value_class; }
inline bool is_character(Attribute attribute) {
  return value_class_of(attribute) == ValueClass::character;
}
inline bool is_national(Attribute attribute) {
  return value_class_of(attribute) == ValueClass::national;
}
inline bool is_numeric(Attribute attribute) {
  return value_class_of(attribute) == ValueClass::numeric;
}
inline bool is_quoted(Attribute attribute) { return traits_of(attribute).is_quoted; }
inline bool is_always_signed(Attribute attribute) { return traits_of(attribute).is_always_signed; }

// The digits that count: a character item without digits has as many as it has bytes.
std::int32_t effective_digits(const ItemAttributes& item);

}  // namespace korvex
