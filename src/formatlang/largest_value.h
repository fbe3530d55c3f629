#pragma once

#include <string>

#include "values/attributes.h"

namespace korvex {

// The end value that an item of attribute 1 to 28 gets when none is entered: the largest that its
// digits hold. Empty for other attributes.
std::string largest_value_text(const ItemAttributes& item);

}  // namespace korvex
