#include "dialogs/rules/save_permission.h"

#include "platform/file.h"
#include "platform/path.h"
#include "platform/user_interface.h"

namespace korvex {

namespace {

using platform::Answer;
using platform::MessageKind;

bool tell_protected(const std::string& folder) {
  platform::user_interface().show_message(
      MessageKind::warning, "The settings cannot be saved: this folder is write-protected.\n" +
                                platform::MessageText::path(folder));
  return false;
}

bool ask_about_protected(const std::string& path) {
  const platform::MessageText question =
      "The Format Information file is write-protected.\nReplace it?\n" +
      platform::MessageText::path(path);
  return platform::user_interface().show_message(MessageKind::question, question) == Answer::yes;
}

}  // namespace

bool may_save(ClColMain& main) {
  const ClFmtLvlInf* level = main.settings.current_level();
  if (level == nullptr || !level->has_settings()) return true;
  std::string target = main.settings_path();
  if (platform::resolve_links(target) != platform::FileCause::none) return true;  // saving tells
  for (const std::string& folder : {main.work_folder(), platform::folder_of(target)}) {
    if (platform::is_write_protected(folder)) return tell_protected(folder);
  }
  if (!platform::is_write_protected(target)) return true;
  if (!ask_about_protected(main.settings_path())) return false;
  main.settings.disregard_protection();
  return true;
}

}  // namespace korvex
