#pragma once

#include <cstdint>
#include <vector>

#include "host/layout/layout.h"
#include "values/error_codes.h"

namespace korvex::host {

// What the module refuses of an item's values, at the text that it is about, with what is
// there.
LayoutError value_error(const Layout& layout, const LayoutItem& item, ErrorCode code);

// An error for every value list that is not there.
void append_missing_lists(const Layout& layout, std::vector<LayoutError>& errors);

// The errors of all ranges and references of clean items, those that read without an error.
void append_value_errors(const Layout& layout, const std::vector<bool>& is_clean,
                         std::vector<LayoutError>& errors);

}  // namespace korvex::host
