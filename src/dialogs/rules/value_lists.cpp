#include "dialogs/rules/value_lists.h"

#include <sys/stat.h>

#include "control/item_settings.h"
#include "dialogs/rules/messages.h"
#include "lists/enumeration_check.h"
#include "platform/user_interface.h"
#include "run/repeat_count.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex {

EnumerationStored choose_enumeration(ClColMain& main, const std::string& path,
                                     ExceededAction exceeded_action) {
  if (path.empty()) return {.code = error::enumeration_file_missing};
  ClDGCol& item = *main.current_item();
  // The check reads the item's record, which an item without settings lacks.
  const bool is_new = item.display().generation_type == generation_type::none;
  if (is_new) {
    if (const ErrorCode result = reset_settings(main); result != error::none)
      return {.code = result};
  }
  const ClFmtColInf* column = main.settings.find_column(item.item_number);
  if (column == nullptr) return {.code = error::no_current_level};
  ListLine line = ListLine::none;
  const Result<std::size_t> checked = check_enumeration(main, path, column->record, line);
  if (!checked) {
    return {.code = checked.code(),
            .suffix = name_suffix(item),
            .number = number_of(line),
            .leaves_settings = is_new};
  }
  if (!is_new) {
    if (const ErrorCode result = reset_settings(main); result != error::none)
      return {.code = result};
  }
  set_enumeration(main, path, exceeded_action);
  return {};
}

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
  using Check = ErrorCode (*)(const std::string&);
  constexpr Check checks[] = {check_file_exists, check_file_readable,
                              [](const std::string& file) { return check_file_not_in_use(file); },
                              check_file_writable};
  for (const Check check : checks) {
    if (const ErrorCode code = check(path); code != error::none) {
      return messages.show(MessageKind::warning, code, "\n" + platform::MessageText::path(path));
    }
  }
  platform::open_in_editor(path);
}

Result<std::size_t> EnumerationCounts::count(ClColMain& main, const FmtColRec& settings) {
  std::string path(field_text(settings.enumeration_path));
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return count_enumeration(main, settings);
  const Version version{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                        status.st_mtim.tv_nsec};
  Key key{std::move(path), attributes_of(settings)};
  const auto found = known_.find(key);
  if (found != known_.end() && found->second.version == version) return found->second.count;
  const Result<std::size_t> counted = count_enumeration(main, settings);
  // What made a file unusable, such as a lock, may be gone without a trace in its version.
  if (counted) known_.insert_or_assign(std::move(key), Known{version, *counted});
  return counted;
}

}  // namespace korvex
