#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "control/col_main.h"
#include "courses/steps.h"
#include "dialogs/rules/messages.h"
#include "dialogs/rules/store_range.h"

namespace korvex {

// What settings would give, seen before they are stored: the first values, the last one and how
// many there are, or why there are none. Values are code page 932.
struct ValuePreview {
  ErrorCode code = error::none;  // why there are none, and the rest is empty
  std::uint64_t number = 0;      // in the text of `code`

  std::vector<std::string> first = {};
  std::string last = {};  // empty when it is one of the first, or nobody knows it
  Steps count = 0;        // until the values come back; `endless` where that is unknown
  bool is_more = false;   // `count` is as far as was looked
};

// A list is read no further than so many bytes.
inline constexpr std::uint64_t list_bytes_looked_at = 4 * 1024 * 1024;

// Of a range that has been entered for an item. Checked as store_range checks it, and stored
// nowhere.
ValuePreview preview_range(const ClDGCol& item, LayoutKind layout_kind, const RangeEntry& entry,
                           const RangeRules& rules);

// Of a list that has been chosen for the current item.
ValuePreview preview_list(const ClColMain& main, const std::string& path);

// Of the item that the current item is to refer to; nothing for one with the initial value.
ValuePreview preview_reference(const ClColMain& main, std::size_t source_index);

// The preview in words, UTF-8; empty for nothing.
std::string preview_text(const ValuePreview& preview, const Messages& messages);

}  // namespace korvex
