#pragma once

#include <cstdint>

namespace korvex {

// Attribute codes, 1 to 32, say what kind of data an item holds. The ones that code mentions by
// themselves have a name; the rest belong to the ranges below.
namespace attribute {
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
namespace value_class {
inline constexpr std::int32_t none = 0;
inline constexpr std::int32_t numeric = 900;
inline constexpr std::int32_t character = 904;
inline constexpr std::int32_t national = 905;
inline constexpr std::int32_t date = 906;
inline constexpr std::int32_t time = 1002;
inline constexpr std::int32_t timestamp = 1003;
}  // namespace value_class

// value_class::none for codes that take no format.
std::int32_t value_class_of(std::int32_t attribute);

// Character attributes 1, 2 and 3: quoted, and always counted as signed.
bool is_quoted_character(std::int32_t attribute);

// Character attributes, quoted or not.
bool is_character(std::int32_t attribute);

bool is_national(std::int32_t attribute);

// Whether generated values stand between quotation marks when the file asks for them.
bool is_quoted(std::int32_t attribute);

// The digits that count: a character item without digits has as many as it has bytes.
std::int32_t effective_digits(const ItemAttributes& item);

}  // namespace korvex
