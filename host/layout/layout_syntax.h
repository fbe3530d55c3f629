#pragma once

#include <toml++/toml.h>

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

#include "host/layout/layout.h"

namespace korvex::host {

// A layout as tables and keys, and every line of it that reads as neither.
struct LayoutSyntax {
  toml::table table;
  std::vector<LayoutError> errors;
  // An unreadable line is replaced by one that reads, so that the rest can be looked at.
  std::set<std::uint32_t> replaced_lines;
  // There were errors that replacing lines did not get over: the table is empty.
  bool is_incomplete = false;
};

LayoutSyntax parse_syntax(std::string_view text);

}  // namespace korvex::host
