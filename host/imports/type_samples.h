#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/databases/table_rules.h"

namespace korvex::host {

// The text of a value of a type, another one for each index as far as the type has so many.
// `declared` is the type as the table declares it, with its sizes. Ranges do not overlap, so that
// a table may exclude that they do. Nothing for a type that nobody here knows.
std::optional<std::string> sample_text(const TypeShape& shape, const std::string& declared,
                                       std::uint64_t index);

}  // namespace korvex::host
