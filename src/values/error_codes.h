#pragma once

#include <cstdint>

#include "korvex/errors.h"

// The numbered failures of the module. A code that comes from outside may be any number of 32 bits.
namespace korvex::error {

enum Code : std::int32_t {
  none = korvex_error_none,
#define KORVEX_ERROR_CODE(name, code, message) name = code,
  KORVEX_ERRORS(KORVEX_ERROR_CODE)
#undef KORVEX_ERROR_CODE
};

// The number under which the user finds a code: 99002 for -2.
constexpr std::int64_t message_number(Code code) {
  const std::int64_t wide = code;
  return KORVEX_MESSAGE_NUMBER(wide < 0 ? wide : -wide);
}

}  // namespace korvex::error

namespace korvex {

// Failures go by this type from where they arise to the C interface, where they become numbers.
using ErrorCode = error::Code;

}  // namespace korvex
