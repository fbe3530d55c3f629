#pragma once

#include "host/layout/layout.h"
#include "host/layout/table_reader.h"

namespace korvex::host {

// Reads the [item.values] of a layout whose header has been read.
ItemValues read_values(const toml::table& table, const Layout& layout,
                       std::vector<LayoutError>& errors);

}  // namespace korvex::host
