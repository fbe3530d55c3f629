#include "platform/user_interface.h"

#include "platform/console_interface.h"

namespace korvex::platform {

namespace {

UserInterface* override_in_use = nullptr;

}  // namespace

UserInterface& user_interface() {
  static ConsoleInterface console;
  return override_in_use != nullptr ? *override_in_use : console;
}

UserInterfaceOverride::UserInterfaceOverride(UserInterface& replacement)
    : previous_(override_in_use) {
  override_in_use = &replacement;
}

UserInterfaceOverride::~UserInterfaceOverride() { override_in_use = previous_; }

}  // namespace korvex::platform
