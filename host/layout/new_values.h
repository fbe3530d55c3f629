#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/layout/layout_writer.h"

namespace korvex::host {

// The values that a person chooses for a new item: a range of its attribute, or something that
// looks like life.
struct NewValues {
  // Keys of [item.values] with their values in TOML, in their order. None: the attribute's range.
  std::vector<LayoutKey> source;
  std::string_view order;    // as layouts name them; empty where it is not told
  std::string empty;         // share; empty for none
  std::int32_t longest = 1;  // characters of a value, as far as it is known

  void note_size(std::string_view value);
};

// Each takes an answer, or answers what was expected instead.
std::string take_list(std::string_view text, NewValues& values);
std::string take_order(std::string_view text, NewValues& values);
std::string take_share(std::string_view text, NewValues& values);

}  // namespace korvex::host
