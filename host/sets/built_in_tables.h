#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace korvex::sets {

// A table that comes with the program: a file of data/sets, which is named
// SET[.PART][.LANGUAGE].VERSION.tsv.
struct BuiltInTable {
  std::string_view set;
  std::string_view part;      // of a set with columns that have nothing to do with each other
  std::string_view language;  // empty when the set is the same in all
  std::int32_t version = 0;   // of the sets, from which on the table is this one
  std::string_view text;      // what ValueTable::read() takes
};

// All of them, sorted by set, part, language and version.
std::span<const BuiltInTable> built_in_tables();

}  // namespace korvex::sets
