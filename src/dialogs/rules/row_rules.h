#pragma once

#include <cstdint>
#include <optional>

#include "control/col_main.h"

namespace korvex {

// What the controls for an item's repeat show and store.
struct RepeatFields {
  bool is_repeated = false;
  std::uint32_t level = 0;
  std::uint32_t count = 0;
};

// Which commands an item's settings allow in the list of all items.
struct RowRules {
  bool may_repeat = false;       // the choice itself
  bool may_edit_repeat = false;  // its level and number, and storing them
  bool may_delete = false;
  RepeatFields fields = {};
};

// Nothing for a generation type that no rule knows: the controls then stay as they are.
std::optional<RowRules> row_rules(const ClColMain& main, ClDGCol& item);

// Writes an item's repeat both where the list shows it and where it is stored.
void store_repeat(const ClColMain& main, ClDGCol& item, const RepeatFields& fields);

// The highest level among the repeated items, 0 without any.
std::uint32_t highest_repeat_level(const ClColMain& main);

}  // namespace korvex
