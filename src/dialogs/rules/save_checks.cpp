#include "dialogs/rules/save_checks.h"

#include "dialogs/rules/messages.h"
#include "lists/enumeration_check.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/user_interface.h"
#include "run/repeat_table.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex {

namespace {

constexpr std::size_t name_limit = 128;

bool is_not_null_without_format(ClDGCol& item) {
  return !is_on(item.null_allowed) && item.display().generation_text.empty() &&
         item.name.size() < name_limit;
}

// `line` is where the file is wrong.
ErrorCode check_enumeration_of(ClColMain& main, const ClDGCol& item, ListLine& line) {
  const ClFmtColInf* column = main.settings.find_column(item.item_number);
  if (column == nullptr) return error::enumeration_file_missing;
  const std::string path(field_text(column->record.enumeration_path));
  return check_enumeration(main, path, column->record, line).code();
}

void check_items(ClColMain& main, SaveCheck& check, bool& has_first_level) {
  for (std::size_t place = 0; place < main.items.size(); ++place) {
    const auto& item = main.items[place];
    const auto row = static_cast<int>(place);
    const ItemDisplay& display = item->display();
    if (display.is_repeated) {
      check.code = check_repeat_level(main, display.repeat_level, item->item_number);
      if (check.code != error::none) {
        check.row = row;
        check.suffix = name_suffix(*item);
        return;
      }
      ++check.repeated_items;
      has_first_level |= display.repeat_level == RepeatLevel::outermost;
    }
    if (check.not_null_name.empty() && is_not_null_without_format(*item)) {
      check.not_null_row = row;
      check.not_null_name = platform::MessageText::code_page(item->name) + " ";
    }
    if (display.generation_type != generation_type::enumeration) continue;
    ListLine line = ListLine::none;
    if (const ErrorCode result = check_enumeration_of(main, *item, line); result != error::none) {
      check.code = result;
      check.row = row;
      check.suffix = name_suffix(*item);
      check.number = number_of(line);
      return;
    }
  }
}

}  // namespace

SaveCheck check_before_save(ClColMain& main) {
  SaveCheck check;
  bool has_first_level = false;
  check_items(main, check, has_first_level);
  if (check.code != error::none || check.repeated_items == 0) return check;
  if (!has_first_level) {
    check.code = error::first_repeat_level_missing;
    return check;
  }
  const std::uint64_t most = main.limits().repeat_max;
  if (most != 0 && static_cast<std::uint64_t>(check.repeated_items) > most) {
    check.code = error::too_many_repeats;
    check.number = static_cast<std::uint32_t>(most);
  }
  return check;
}

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
