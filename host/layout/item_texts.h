#pragma once

#include "control/col_main.h"
#include "control/control_file.h"

namespace korvex::host {

// Texts must leave room for the terminator of their field.
inline constexpr std::size_t longest_item_name = sizeof(ControlItem::name) - 1;
inline constexpr std::size_t longest_item_description = sizeof(ControlItem::description) - 1;

}  // namespace korvex::host
