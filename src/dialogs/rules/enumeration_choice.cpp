#include "dialogs/rules/enumeration_choice.h"

#include "control/item_settings.h"
#include "dialogs/rules/messages.h"
#include "lists/enumeration_check.h"
#include "values/error_codes.h"

namespace korvex {

EnumerationStored choose_enumeration(ClColMain& main, const std::string& path,
                                     std::int32_t exceeded_action) {
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
  std::int32_t line = 0;
  const Result<std::int32_t> checked = check_enumeration(main, path, column->record, line);
  if (!checked) {
    return {.code = checked.code(),
            .suffix = name_suffix(item),
            .number = static_cast<std::uint64_t>(line),
            .leaves_settings = is_new};
  }
  if (!is_new) {
    if (const ErrorCode result = reset_settings(main); result != error::none)
      return {.code = result};
  }
  set_enumeration(main, path, exceeded_action);
  return {};
}

}  // namespace korvex
