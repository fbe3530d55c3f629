#pragma once

#include <cstdint>
#include <string>

#include "control/col_main.h"

namespace korvex {

struct EnumerationStored {
  ErrorCode code = error::none;       // what was refused
  platform::MessageText suffix = {};  // belongs behind the message of `code`
  std::uint64_t number = 0;           // and into it: a line of the file
  bool leaves_settings = false;  // the item had none before and has got the initial value for now
};

// Checks an enumeration file against the current item, of which there must be one, and stores it as
// the item's settings, also for an item that may not be NULL. A refused file leaves the settings as
// they were, but see `leaves_settings`.
EnumerationStored choose_enumeration(ClColMain& main, const std::string& path,
                                     std::int32_t exceeded_action);

}  // namespace korvex
