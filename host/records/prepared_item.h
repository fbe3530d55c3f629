#pragma once

#include "host/layout/layout.h"
#include "settings/col_inf.h"

namespace korvex::host {

// An item that stands in the records, with its settings; null where its values are the program's
// own.
struct PreparedItem {
  const LayoutItem* item = nullptr;
  const ClFmtColInf* column = nullptr;
  bool is_boolean = false;  // its list has no other values than "true" and "false"
};

}  // namespace korvex::host
