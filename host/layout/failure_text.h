#pragma once

#include <cstdint>
#include <string>

#include "control/col_main.h"
#include "host/layout/layout.h"
#include "lists/enumeration_check.h"

namespace korvex::host {

// "reason: No space left on device", for a code about a file; empty for other codes, and when the
// error number is 0.
std::string reason_of(ErrorCode code, int error_number);

// A message and below it the reason, if the last failure of a file is one.
std::string with_reason(std::string message, ErrorCode code);

// What the module would say of a failure in the state of `main`, as UTF-8, and why, if that is
// known. `bad_line`, unless none, is the line of a list that the message speaks of.
std::string failure_text(ErrorCode code, const ClColMain& main, ListLine bad_line);

// The module's numbered message of a code, in the words of the layout's kind, and why, if the last
// failure of a file says so.
std::string numbered_message(ErrorCode code, const Layout& layout);

}  // namespace korvex::host
