#pragma once

#include <cstdint>
#include <string>

#include "control/col_main.h"
#include "lists/enumeration_check.h"
#include "platform/user_interface.h"

namespace korvex {

// How DGCreateData tells the user of a failed run.
struct FailureReport {
  bool is_shown = true;
  platform::MessageKind kind = platform::MessageKind::warning;
  platform::MessageText text;
  std::int32_t returned = 0;  // what the function answers
};

// `line`, unless 0, is the line of a value list that the message speaks of.
FailureReport describe_failure(ErrorCode code, const ClColMain& main,
                               ListLine line = ListLine::none);

// Shows the report and, where the user asks for it, opens the error file in the editor. Answers
// what the function returns.
std::int32_t report_failure(ErrorCode code, const ClColMain& main);

}  // namespace korvex
