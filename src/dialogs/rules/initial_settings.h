#pragma once

#include <cstdint>

#include "control/col_main.h"

namespace korvex {

// Gives items without any settings their first ones. Without a settings file every item gets the
// range that its attribute proposes, and one whose range cannot be made stays unset. With a file
// that holds none, the columns of a table that may be NULL become so where the host asks for it.
ErrorCode give_initial_settings(ClColMain& main);

}  // namespace korvex
