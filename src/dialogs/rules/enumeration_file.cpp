#include "dialogs/rules/enumeration_file.h"

#include "lists/file_access.h"
#include "platform/user_interface.h"

namespace korvex {

namespace {

using platform::MessageKind;

constexpr std::size_t path_limit = 259;  // bytes

const platform::FileQuestion question = {
    .title = "Specifying Enumeration Files",
    .folder = {},
    .filters = {{"All files (*.*)", "*.*"}, {"Data files (*.dat)", "*.dat"}}};

}  // namespace

std::optional<std::string> ask_for_enumeration_file(const std::string& folder) {
  platform::FileQuestion asked = question;
  asked.folder = folder;
  std::optional<std::string> path = platform::user_interface().choose_file(asked);
  if (path && path->size() > path_limit) {
    platform::user_interface().show_message(
        MessageKind::warning, platform::MessageText::words("The path of the file is longer than " +
                                                           std::to_string(path_limit) + " bytes."));
    return std::nullopt;
  }
  return path;
}

void open_enumeration_file(const std::string& path, const Messages& messages) {
  for (const auto check :
       {check_file_exists, check_file_readable, check_file_not_in_use, check_file_writable}) {
    if (const ErrorCode code = check(path); code != error::none) {
      return messages.show(MessageKind::warning, code, "\n" + platform::MessageText::path(path));
    }
  }
  platform::open_in_editor(path);
}

}  // namespace korvex
