#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace korvex::test {

// A layout of items drawn at random.
struct RandomLayout {
  std::string file;
  std::uint64_t records = 0;
  std::string more_keys;  // of [layout]
  std::vector<std::string> items;

  void write(const std::string& folder) const;
};

// An item that every layout can have one more of. The name is an item's own.
std::string layout_item(const std::string& name, const std::string& values);

// Two tables with sources and ways of every kind; keys of the children lead to the parents, whose
// sums lead back.
struct RandomTables {
  RandomLayout parents;
  RandomLayout children;
};

// Items of these are hardly large enough, or not quite.
RandomTables draw_tight_tables(std::uint64_t seed);

RandomTables draw_tables(std::uint64_t seed);

}  // namespace korvex::test
