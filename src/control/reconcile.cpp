#include "control/reconcile.h"

#include <string>

#include "control/item_settings.h"
#include "platform/path.h"
#include "platform/user_interface.h"
#include "values/error_codes.h"
#include "values/record_text.h"

namespace korvex {

namespace {

bool is_date_or_timestamp(Attribute attribute) {
  return attribute == attribute::date || attribute == attribute::timestamp;
}

bool gets_null_by_default(const ClColMain& main, const ClDGCol& item) {
  return main.layout_kind() != layout_kind::record_file && main.is_null_default() &&
         item.null_allowed == Flag::on;
}

void show_initial_value(const ClColMain& main, ClDGCol& item) {
  item.display().generation_type = generation_type::initial_value;
  item.display().generation_text = initial_value_text(main.layout_kind());
}

// An item whose referenced item is gone is left without a value.
ErrorCode show_reference(ClColMain& main, ClDGCol& item) {
  ItemDisplay& display = item.display();
  if (const ClDGCol* source = main.find_item(display.referenced_item)) {
    display.generation_text = source->name;
    return error::none;
  }
  display.referenced_item = ItemNumber::none;
  const ErrorCode result = main.settings.set_initial_value(item.item_number, item.attributes());
  if (result == error::none) show_initial_value(main, item);
  return result;
}

ErrorCode show_settings(ClColMain& main, ClDGCol& item, const FmtColRec& stored) {
  const EditedSettings& edited = main.settings.edited();
  ItemDisplay& display = item.display();
  item.is_left_out = false;
  display.generation_type = edited.generation_type;
  display.referenced_item = edited.referenced_item;
  display.exceeded_action = edited.choices.exceeded_action;
  display.is_custom = is_on(edited.choices.custom_format);
  display.is_repeated = is_on(stored.repeat_flag);
  display.repeat_level = stored.repeat_level;
  display.repeat_count = stored.repeat_count;
  display.enumeration_path = field_text(stored.enumeration_path);
  display.enumeration_name = platform::base_name(display.enumeration_path);
  switch (edited.generation_type) {
    case generation_type::initial_value:
      display.generation_text = initial_value_text(main.layout_kind());
      return error::none;
    case generation_type::range:
      display.generation_text = edited.texts.format;
      display.start = edited.texts.start;
      display.end = edited.texts.end;
      display.increment = edited.texts.increment;
      return error::none;
    case generation_type::enumeration:
      display.generation_text = enumeration_text;
      return error::none;
    case generation_type::reference:
      return show_reference(main, item);
    default:
      return error::none;
  }
}

void reject_settings(ClColMain& main) {
  main.settings.discard_settings();
  main.settings.delete_file();
  main.mismatch = true;
  for (const auto& item : main.items) {
    item->display() = {};
    item->is_left_out = false;
  }
  std::string text;
  main.append_error_text(error::settings_mismatch, text);
  platform::user_interface().show_message(platform::MessageKind::plain,
                                          platform::MessageText::words(text));
}

}  // namespace

bool settings_fit(const ItemAttributes& item, const FmtColRec& stored, LayoutKind layout) {
  if (layout == layout_kind::table && is_date_or_timestamp(item.attribute) &&
      is_date_or_timestamp(stored.attribute)) {
    return true;
  }
  return item.attribute == stored.attribute &&
         effective_digits(item) == effective_digits(attributes_of(stored));
}

Result<std::size_t> reconcile(ClColMain& main) {
  main.settings.set_run_mode(main.run_mode());
  const Result<std::size_t> loaded =
      main.settings.load(main.level(), main.records(), main.layout_kind());
  if (!loaded || *loaded == 0) return loaded;

  std::size_t with_settings = 0;
  for (std::size_t i = 0; i < main.items.size(); ++i) {
    ClDGCol& item = *main.select_item(i);
    const Result<bool> found = main.settings.read_item(item.item_number);
    if (!found) return found.code();
    ErrorCode result = error::none;
    if (!*found) {
      if (!gets_null_by_default(main, item)) continue;
      result = main.settings.set_initial_value(item.item_number, item.attributes());
      if (result == error::none) show_initial_value(main, item);
    } else {
      const FmtColRec& stored = main.settings.find_column(item.item_number)->record;
      if (!settings_fit(item.attributes(), stored, main.layout_kind())) {
        reject_settings(main);
        return 1;
      }
      result = show_settings(main, item, stored);
    }
    if (result != error::none) return result;
    ++with_settings;
  }
  return with_settings;
}

}  // namespace korvex
