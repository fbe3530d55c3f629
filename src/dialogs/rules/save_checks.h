#pragma once

#include <cstdint>

#include "control/col_main.h"

namespace korvex {

// What the settings of all items come to before they are saved.
struct SaveCheck {
  ErrorCode code = error::none;  // of the first rule broken; the user sees it with what follows
  platform::MessageText suffix;  // behind its text
  std::uint64_t number = 0;      // in its text
  int row = -1;                  // of the item that broke it, if it was one
  std::int32_t repeated_items = 0;
  int not_null_row = -1;
  platform::MessageText
      not_null_name;  // the first NOT NULL item without a format, with a blank behind it
};

// Checks, item by item, that no two repeat at one level and that enumeration files are usable, and
// then that repeats begin at level 1 and are not too many.
SaveCheck check_before_save(ClColMain& main);

}  // namespace korvex
