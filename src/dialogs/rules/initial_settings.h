#pragma once

#include <cstdint>
#include <string>

#include "control/col_main.h"
#include "values/attributes.h"

namespace korvex {

// Gives items without any settings their first ones. Without a settings file every item gets the
// range that its attribute proposes, and one whose range cannot be made stays unset. With a file
// that holds none, the columns of a table that may be NULL become so where the host asks for it.
ErrorCode give_initial_settings(ClColMain& main);

// The format that a dialog proposes for an item without one; empty when its attribute has none or
// its digits are impossible. Follows a table of its own: the settings that a whole new file gets
// differ for some attributes.
std::string default_format(const ItemAttributes& item);

}  // namespace korvex
