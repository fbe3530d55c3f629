#pragma once

#include <cstdint>
#include <vector>

#include "host/layout.h"

namespace korvex::host {

// What the module refuses of an item's values, at the text that it is about, with what stands
// there.
LayoutError value_error(const Layout& layout, const LayoutItem& item, std::int32_t code);

// The errors of all ranges of clean items, those that read without an error.
void append_value_errors(const Layout& layout, const std::vector<bool>& is_clean,
                         std::vector<LayoutError>& errors);

}  // namespace korvex::host
