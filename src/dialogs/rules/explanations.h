#pragma once

#include <string>
#include <string_view>

#include "control/dg_col.h"

namespace korvex {

// What tooltips say. Texts are UTF-8, with a line for each fact.

// An item's kind of data, size and sign, and whether it may be NULL.
std::string explain_item(const ClDGCol& item);

// What the directives of a format write, each with an example value in a record file; of directives
// alike only the first. `format` is in code page 932.
std::string explain_format(std::string_view format);

}  // namespace korvex
