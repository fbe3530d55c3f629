#pragma once

#include <cstdint>

#include "formatlang/attributes.h"

// Items as the cases of the format language need them.
namespace korvex::test {

inline ItemAttributes characters(std::int32_t length, std::int32_t digits) {
  return {1, 1, length, digits, 0};
}
inline ItemAttributes characters(std::int32_t length) { return characters(length, length); }
inline ItemAttributes number(std::int32_t length, std::int32_t digits, std::int32_t decimals = 0) {
  return {4, 0, length, digits, decimals};
}
inline ItemAttributes signed_number(std::int32_t length, std::int32_t digits,
                                    std::int32_t decimals = 0) {
  return {4, 1, length, digits, decimals};
}
inline ItemAttributes national(std::int32_t digits) { return {11, 0, 2 * digits, digits, 0}; }
inline ItemAttributes date(std::int32_t digits = 8) { return {28, 0, digits, digits, 0}; }
inline ItemAttributes time() { return {31, 0, 6, 6, 0}; }
inline ItemAttributes timestamp() { return {32, 0, 15, 15, 0}; }

}  // namespace korvex::test
