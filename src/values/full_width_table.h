#pragma once

#include <cstdint>

// The full-width characters in counting order: every double-byte code that code page 932 assigns
// from 0x8142 to 0xEEF6, ascending, then six more that stand outside that order. The code 0x81CA
// stands at two places.
namespace korvex {

inline constexpr std::int32_t full_width_count = 7334;

// The two-byte code at `index`, 0 to full_width_count - 1, lead byte in the high half.
std::uint16_t full_width_code(std::int32_t index);

// The index of the code's first place; an unknown code counts as the last index.
std::int32_t full_width_index(std::uint16_t code);

}  // namespace korvex
