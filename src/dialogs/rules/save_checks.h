#pragma once

#include <cstdint>

#include "control/col_main.h"

namespace korvex {

// What the settings of all items come to before they are saved.
struct SaveCheck {
  ErrorCode code = error::none;  // of the first rule broken; the user sees it with what follows
  platform::MessageText suffix;  // after its text
  std::uint64_t number = 0;      // in its text
  int row = -1;                  // of the item that broke it, if it was one
  std::int32_t repeated_items = 0;
  int not_null_row = -1;
  platform::MessageText
      not_null_name;  // the first NOT NULL item without a format, with a blank after it
};

// Checks, item by item, that no two repeat at one level and that value lists are usable, and
// then that repeats begin at level 1 and are not too many.
SaveCheck check_before_save(ClColMain& main);

// Whether the settings may go where they belong, asked before they are saved: a failure then would
// end the dialog, and all that was entered with it. Says so when a folder is write-protected, and
// asks the user about a settings file that is: a Yes counts for `main`.
bool may_save(ClColMain& main);

}  // namespace korvex
