#pragma once

#include <cstdint>

#include "korvex/errors.h"
#include "values/number_of.h"

namespace korvex {

// The numbered failures of the module, said as error::cannot_open. They go by this type from where
// they arise to the C interface, where they become numbers. A code that comes from outside may be
// any number of 32 bits.
enum class ErrorCode : std::int32_t {
  none = korvex_error_none,
#define KORVEX_ERROR_CODE(name, code, message) name = code,
  KORVEX_ERRORS(KORVEX_ERROR_CODE)
#undef KORVEX_ERROR_CODE
};

namespace error {

using enum ErrorCode;

// The number under which the user finds a code: 99002 for -2.
constexpr std::int64_t message_number(ErrorCode code) {
  const std::int64_t wide = number_of(code);
  return KORVEX_MESSAGE_NUMBER(wide < 0 ? wide : -wide);
}

}  // namespace error

}  // namespace korvex
