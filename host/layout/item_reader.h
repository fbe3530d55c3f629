#pragma once

#include <cstdint>

#include "host/layout/layout.h"
#include "host/layout/table_reader.h"

namespace korvex::host {

// Reads one item of a layout whose header has been read; `position`, from 1, is its place among the
// items.
LayoutItem read_item(const toml::table& table, const Layout& layout, std::int32_t position,
                     std::vector<LayoutError>& errors);

}  // namespace korvex::host
