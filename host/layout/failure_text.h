#pragma once

#include <cstdint>
#include <string>

#include "control/col_main.h"

namespace korvex::host {

// What the module would say of a failure in the state of `main`, as UTF-8. `bad_line`, unless 0, is
// the line of a list that the message speaks of.
std::string failure_text(std::int32_t code, const ClColMain& main, std::int32_t bad_line);

}  // namespace korvex::host
