#include "control/dg_col.h"

namespace korvex {

ItemDisplay& ClDGCol::display() {
  if (!display_) display_ = std::make_unique<ItemDisplay>();
  return *display_;
}

}  // namespace korvex
