#pragma once

#include <toml++/toml.h>

#include <optional>
#include <string_view>

#include "host/layout/layout.h"

namespace korvex::host {

// Reads a text as tables and keys into `table`, or answers the first error of its syntax: what
// stands behind that cannot be told from what belongs to it.
std::optional<LayoutError> parse_syntax(std::string_view text, toml::table& table);

}  // namespace korvex::host
