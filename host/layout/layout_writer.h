#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "values/attributes.h"

namespace korvex::host {

// A key of a layout with its value as TOML has it.
struct LayoutKey {
  std::string name;
  std::string value;
};

// A text as TOML has it, with its quotation marks.
std::string toml_text(std::string_view text);

// Several of them, in brackets.
std::string toml_texts(const std::vector<std::string>& texts);

// An item that is yet to be written down. Texts are UTF-8.
struct ItemDraft {
  std::string name;
  std::vector<std::string> remarks;  // comment lines above the item
  ItemAttributes attributes = {};
  bool nullable = true;
  std::vector<LayoutKey> values;  // the type first
};

struct LayoutDraft {
  std::vector<std::string> remarks;              // comment lines at the top
  std::string table;                             // of the database
  std::vector<std::vector<std::string>> unique;  // sets of items in which the records differ
  std::int32_t records = 0;
  std::string data;       // the data file's path, seen from the layout
  bool is_utf8 = false;   // with what is pinned for sources and ways
  std::int64_t seed = 0;  // 0 without one
  std::vector<ItemDraft> items;
};

// Writes a layout of kind "table" in the form that read_layout() reads.
void write_layout(const LayoutDraft& layout, std::ostream& out);

}  // namespace korvex::host
