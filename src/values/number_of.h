#pragma once

#include <type_traits>

namespace korvex {

// The number that files and callers in C hold for a code, a kind or a count.
template <typename Code>
requires std::is_enum_v<Code>
constexpr auto number_of(Code code) { return static_cast<std::underlying_type_t<Code>>(code); }

}  // namespace korvex
