#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/layout.h"

namespace korvex::host {

// A layout, or what is wrong with it: the errors of the file in the order of their places, all of
// them unless there are very many. With errors the layout is not to be used.
struct LayoutReading {
  Layout layout;
  std::vector<LayoutError> errors;
};

// Reads a layout file. `records`, where given, stands for the number of records in the file, which
// may then be absent.
LayoutReading read_layout(const std::string& file, std::optional<std::int32_t> records);

// The same for a text that is already in memory; `file` only names it and anchors its paths.
LayoutReading parse_layout(std::string_view text, const std::string& file,
                           std::optional<std::int32_t> records);

}  // namespace korvex::host
