#pragma once

#include <toml++/toml.h>

#include <cstddef>
#include <optional>
#include <string_view>

#include "host/layout/layout.h"

namespace korvex::host {

// Reads a text as tables and keys into `table`, or answers the first error of its syntax: what
// follows that cannot be told from what belongs to it.
std::optional<LayoutError> parse_syntax(std::string_view text, toml::table& table);

// A table in a table for each part: what takes such a key in goes as deep into the stack, and no
// key of a layout has more than three.
inline constexpr std::size_t most_key_parts = 8;

struct LongKey {
  SourcePlace place;
  std::size_t parts = 0;
};

// The first dotted key with more parts than that, plain or quoted, in a line of its own, a table's
// header or an inline table. Exact as far as the text is TOML, which is as far as a parser reads.
std::optional<LongKey> find_long_key(std::string_view text);

}  // namespace korvex::host
