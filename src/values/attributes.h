#pragma once

#include <cstdint>

namespace korvex {

// Attribute codes, 1 to 32, say what kind of data an item holds. The ones that code mentions by
// themselves have a name; what is known of all of them stands in one table, see traits_of.
namespace attribute {
inline constexpr std::int32_t decimal = 4;
inline constexpr std::int32_t integer = 23;
inline constexpr std::int32_t small_integer = 24;
inline constexpr std::int32_t date = 28;
inline constexpr std::int32_t time = 31;
inline constexpr std::int32_t timestamp = 32;
inline constexpr std::int32_t highest = 32;
}  // namespace attribute

// What an item is, as the control file says.
struct ItemAttributes {
  std::int32_t attribute = 0;
  std::int32_t signed_flag = 0;
  std::int32_t length = 0;    // bytes
  std::int32_t digits = 0;    // digits or characters
  std::int32_t decimals = 0;  // of the digits
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
  bool is_quoted;         // values stand between quotation marks when the file asks for them
  bool is_always_signed;  // whatever the control file says
  bool checks_digits;     // nothing is proposed where digits and decimals do not go together
  LargestValue largest;
  FormatLimit limit;
};

// What is known of an attribute; of a code that is none, what holds for nothing.
const AttributeTraits& traits_of(std::int32_t attribute);

inline ValueClass value_class_of(std::int32_t code) { return traits_of(code).value_class; }
inline bool is_character(std::int32_t code) {
  return value_class_of(code) == ValueClass::character;
}
inline bool is_national(std::int32_t code) { return value_class_of(code) == ValueClass::national; }
inline bool is_numeric(std::int32_t code) { return value_class_of(code) == ValueClass::numeric; }
inline bool is_quoted(std::int32_t code) { return traits_of(code).is_quoted; }
inline bool is_always_signed(std::int32_t code) { return traits_of(code).is_always_signed; }

// The digits that count: a character item without digits has as many as it has bytes.
std::int32_t effective_digits(const ItemAttributes& item);

}  // namespace korvex
