#pragma once

#include <string>
#include <string_view>

#include "host/layout/table_reader.h"

namespace korvex::host {

// The path at the key, seen from where the program runs; empty, and reported unless absent, when
// there is none that can be used.
std::string read_path(TableReader& reader, std::string_view key, const std::string& layout_file);

}  // namespace korvex::host
