#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "values/attributes.h"

// Cutting format texts and value lists into pieces.
namespace korvex {

// A piece of a format: fixed text, or one directive without its "%".
struct FormatPiece {
  bool is_directive = false;
  std::string_view text;
};

// Cuts a format at its single quotes; a piece that begins with "%" is cut again into directives.
// The pieces point into `format`.
std::vector<FormatPiece> cut_format(std::string_view format);

// Cuts a list at its commas; empty entries do not count.
std::vector<std::string_view> cut_list(std::string_view list);

// Into how many one-character elements a directive is split, by its count: more than 1 only for a
// full-width directive of a character or national item.
std::int64_t split_count(ValueClass item_class, std::string_view directive);

// The number of value texts, joined by commas in a list, that the elements of a stored format show:
// entry i is how many consecutive variable elements share the i-th text.
std::vector<std::int64_t> value_groups(ValueClass item_class, std::string_view format);

}  // namespace korvex
