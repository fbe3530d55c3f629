#include "dialogs/rules/initial_settings.h"

#include "control/item_settings.h"

namespace korvex {

namespace {

constexpr std::int32_t null_by_default = 1;

void give_default_ranges(ClColMain& main) {
  for (std::size_t index = 0; main.select_item(index) != nullptr; ++index) {
    if (!main.build_default_settings()) continue;
    constexpr bool initializes = false;
    constexpr bool is_custom = true;
    store_format(main, main.default_texts, initializes, is_custom);
  }
}

ErrorCode give_null(ClColMain& main) {
  for (std::size_t index = 0; main.select_item(index) != nullptr; ++index) {
    if (main.current_item()->null_allowed == 0) continue;
    if (const ErrorCode result = set_initial_value(main); result != error::none) return result;
  }
  return error::none;
}

}  // namespace

ErrorCode give_initial_settings(ClColMain& main) {
  if (!main.settings.is_held()) {
    give_default_ranges(main);
    return error::none;
  }
  const bool is_record_file = main.layout_kind() == layout_kind::record_file;
  if (is_record_file || main.header().null_default != null_by_default) return error::none;
  return give_null(main);
}

}  // namespace korvex
