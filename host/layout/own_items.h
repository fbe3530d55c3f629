#pragma once

#include <vector>

#include "host/layout/layout.h"

// What of a layout goes beyond the module.
namespace korvex::host {

// Whether the module knows all that is said of the item's values.
inline bool is_plain(const LayoutItem& item) {
  return !item.values || item.values->own_keys.empty();
}
bool is_plain(const Layout& layout);

// What the references that begin at an item lead to.
struct ReferenceTargets {
  bool go_beyond_module = false;    // through an item whose values the module does not know all of
  const LayoutItem* end = nullptr;  // that refers to none; null for a circle or a missing item
};

// For each item of the layout, to whose items the answer points. Every reference is followed once,
// however long the chain is.
std::vector<ReferenceTargets> follow_references(const Layout& layout);

// Which items have values that the engine makes, if only for a way of their own to lead through
// them. The others have sources of the program's own, or take over the values of an item.
std::vector<bool> engine_items(const Layout& layout);

// What the module cannot take: an error for each character that its code page lacks, and one for
// all keys that it does not know, since another command is the answer to all of them.
std::vector<LayoutError> find_own_keys(const Layout& layout);

}  // namespace korvex::host
