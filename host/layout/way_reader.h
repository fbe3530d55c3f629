#pragma once

#include "host/layout/value_types.h"

// The keys of [item.values] that go with every type: the way through the values, and which records
// have none.
namespace korvex::host {

// Reads them into `values`, whose type is known.
void read_way(TableReader& reader, const ValueType& type, ItemValues& values,
              std::vector<LayoutError>& errors);

// Only tells the reader that there are such keys.
void know_way_keys(TableReader& reader);

}  // namespace korvex::host
