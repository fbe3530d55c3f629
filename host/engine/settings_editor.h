#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/layout/layout.h"
#include "values/error_codes.h"

namespace korvex::host {

// An item whose values the module refused.
struct ItemFailure {
  const LayoutItem* item;  // of the layout
  ErrorCode code;
};

struct SettingsResult {
  std::string file;                         // to be written, which may be a copy
  ErrorCode file_code = error::none;        // of a failed load or save
  std::vector<const LayoutItem*> unfit;     // items whose kept settings no longer fit them
  std::vector<ItemFailure> failures;        // every item that failed, in layout order
  std::size_t items_with_settings = 0;      // of the level, after a successful save
  std::vector<const LayoutItem*> left_out;  // items without settings, after a successful save
  std::int32_t repeated_items = 0;          // of the layout, after a successful save
};

// Writes the values of a layout into its settings file through the module's own checks. Items
// without values keep what the file holds, as far as it fits them. Nothing is saved unless all
// items passed. Missing folders of the layout's paths are made.
SettingsResult write_settings_of(const Layout& layout);

}  // namespace korvex::host
