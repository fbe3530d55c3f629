#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

// Appends the numbered message of a code: "99002:Failed to open the control file." for -2. A code
// without a message gives its number alone. The codes of enumeration lines replace what `text`
// holds by "%d line of a enum file " and their message, without a number.
void append_error_text(ErrorCode code, LayoutKind layout_kind, std::string& text);

// The message alone, without its number or the enumeration prefix; empty for a code without one.
std::string error_message(ErrorCode code, LayoutKind layout_kind);

// Replaces the first "%ld" or "%d". Nothing from outside may have been appended before.
std::string fill_number(std::string text, std::uint64_t number);

}  // namespace korvex
