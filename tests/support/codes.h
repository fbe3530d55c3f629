#pragma once

#include <concepts>
#include <cstdint>
#include <ostream>
#include <type_traits>
#include <vector>

// Tests say codes, kinds and flags as the numbers that files and hosts have.
namespace korvex {

template <typename Code>
concept NumberedCode = std::is_enum_v<Code> && !std::convertible_to<Code, std::int32_t> &&
                       std::same_as<std::underlying_type_t<Code>, std::int32_t>;

bool operator==(NumberedCode auto code, std::int32_t number) {
  return static_cast<std::int32_t>(code) == number;
}

template <NumberedCode Code>
void PrintTo(const Code& code, std::ostream* out) {
  *out << static_cast<std::int32_t>(code);
}

namespace test {

// What has several of them, for one comparison.
std::vector<std::int32_t> as_numbers(auto... codes) {
  return {static_cast<std::int32_t>(codes)...};
}

}  // namespace test

}  // namespace korvex
