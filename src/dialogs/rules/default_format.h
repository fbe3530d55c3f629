#pragma once

#include <string>

#include "values/attributes.h"

namespace korvex {

// The format that a dialog proposes for an item without one; empty when its attribute has none or
// its digits are impossible. Follows a table of its own: the settings that a whole new file gets
// differ for some attributes.
std::string default_format(const ItemAttributes& item);

}  // namespace korvex
