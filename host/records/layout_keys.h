#pragma once

#include <string>
#include <vector>

#include "host/records/prepared_layout.h"

namespace korvex::host {

// A key of a layout: items that take those of one record of another.
struct LayoutKeyUse {
  std::string parent;                     // the settled path of the other layout
  std::vector<std::string> items;         // of this layout
  std::vector<std::string> parent_items;  // side by side with them
};

// Items of one group take one record.
std::vector<LayoutKeyUse> keys_of(const PreparedLayout& prepared);

}  // namespace korvex::host
