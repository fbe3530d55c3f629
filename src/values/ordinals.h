#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Character values as numbers: letters are digits of base 26, full-width characters digits of base
// 7334. Ordinals are 32 bits; a longer text than the format language allows wraps, it never
// overflows.
namespace korvex {

// `base_letter` is 'A' or 'a'.
std::int32_t letters_to_ordinal(char base_letter, std::string_view text);

// Rewrites the `size` letters at `text`. A digit that falls outside the letters ends the
// conversion: it and what follows stay as they were, which the caller's comparison with the end
// value catches.
void ordinal_to_letters(char base_letter, std::int32_t ordinal, char* text, std::size_t size);

// Reads the text two bytes at a time; an odd last byte does not count.
std::int32_t full_width_to_ordinal(std::string_view text);

// Rewrites the size / 2 characters at `text`, under the same rule as the letters.
void ordinal_to_full_width(std::int32_t ordinal, char* text, std::size_t size);

// The full-width characters in counting order: every double-byte code that code page 932 assigns
// from 0x8142 to 0xEEF6, ascending, then six more that stand outside that order. The code 0x81CA
// is at two places.
inline constexpr std::int32_t full_width_count = 7334;

// The two-byte code at `index`, 0 to full_width_count - 1, lead byte in the high half.
std::uint16_t full_width_code(std::int32_t index);

// The index of the code's first place; an unknown code counts as the last index.
std::int32_t full_width_index(std::uint16_t code);

}  // namespace korvex
