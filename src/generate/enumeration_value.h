#pragma once

#include <cstdint>
#include <string_view>

#include "formatlang/attributes.h"

namespace korvex {

// Whether a value of an enumeration file fits the item: 0, or the code of the first rule that it
// breaks (-125 to -134, or -137 for an attribute that takes no enumeration).
std::int32_t check_enumeration_value(const ItemAttributes& item, std::string_view value);

}  // namespace korvex
