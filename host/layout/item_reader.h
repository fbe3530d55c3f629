#pragma once

#include <cstdint>

#include "host/layout/layout.h"
#include "host/layout/table_reader.h"
#include "host/layout/value_types.h"

namespace korvex::host {

// Reads one item of a layout whose header has been read; `position`, from 1, is its place among the
// items.
LayoutItem read_item(const toml::table& table, const Layout& layout, std::int32_t position,
                     std::vector<LayoutError>& errors);

// Reads the [item.values] of a layout whose header has been read.
ItemValues read_values(const toml::table& table, const Layout& layout,
                       std::vector<LayoutError>& errors);

// The keys of [item.values] that go with every type: the way through the values, and which records
// have none.

// Reads them into `values`, whose type is known.
void read_way(TableReader& reader, const ValueType& type, ItemValues& values,
              std::vector<LayoutError>& errors);

// Only tells the reader that there are such keys.
void know_way_keys(TableReader& reader);

}  // namespace korvex::host
