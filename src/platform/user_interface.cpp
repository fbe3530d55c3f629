#include "platform/user_interface.h"

#include <cstdlib>
#include <string_view>

#include "platform/console_interface.h"

namespace korvex::platform {

namespace {

UserInterface* override_in_use = nullptr;

// Who asks for the desktop by name is told that this build has none.
bool tell_missing_desktop(UserInterface& console) {
  const char* wanted = std::getenv("KORVEX_UI");
  const bool is_asked = wanted != nullptr && std::string_view(wanted) == "desktop";
  if (is_asked) {
    console.show_message(MessageKind::warning,
                         "The desktop is not available in this build; using the console.");
  }
  return is_asked;
}

}  // namespace

UserInterface& user_interface() {
  if (override_in_use != nullptr) return *override_in_use;
  static ConsoleInterface console;
  [[maybe_unused]] static const bool is_told = tell_missing_desktop(console);
  return console;
}

UserInterfaceOverride::UserInterfaceOverride(UserInterface& replacement)
    : previous_(override_in_use) {
  override_in_use = &replacement;
}

UserInterfaceOverride::~UserInterfaceOverride() { override_in_use = previous_; }

}  // namespace korvex::platform
