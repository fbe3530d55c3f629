#include "platform/user_interface.h"

#include <system_error>

#include "platform/process.h"

namespace korvex::platform {

namespace {

UserInterface* override_in_use = nullptr;

InterfaceProvider provider_in_use = nullptr;

}  // namespace

UserInterface& user_interface() {
  if (override_in_use != nullptr) return *override_in_use;
  UserInterface* provided = provider_in_use != nullptr ? provider_in_use() : nullptr;
  static ConsoleInterface console;
  return provided != nullptr ? *provided : console;
}

void set_interface_provider(InterfaceProvider provider) { provider_in_use = provider; }

void open_in_editor(const std::string& path) {
  const std::error_code failure = user_interface().open_editor(path);
  if (!failure) return;
  const MessageText text = "Call : " + MessageText::path(editor_command(path)) +
                           MessageText::words("\nError : " + std::to_string(failure.value()) +
                                              " (" + failure.message() + ")");
  user_interface().show_message(MessageKind::plain, text);
}

UserInterfaceOverride::UserInterfaceOverride(UserInterface& replacement)
    : previous_(override_in_use) {
  override_in_use = &replacement;
}

UserInterfaceOverride::~UserInterfaceOverride() { override_in_use = previous_; }

}  // namespace korvex::platform
