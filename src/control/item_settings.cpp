#include "control/item_settings.h"

#include "platform/path.h"
#include "values/error_codes.h"

namespace korvex {

ErrorCode check_reference(const ItemAttributes& source, const ItemAttributes& target) {
  if (source.attribute != target.attribute) return error::reference_attribute_differs;
  if (source.signed_flag != target.signed_flag) return error::reference_sign_differs;
  if (source.length > target.length || source.digits > target.digits ||
      source.decimals > target.decimals) {
    return error::reference_too_wide;
  }
  if (target.decimals != 0 && source.decimals == 0) return error::reference_without_decimals;
  return error::none;
}

std::string_view initial_value_text(LayoutKind layout) {
  return layout == layout_kind::record_file ? "Init Value" : "Init Null";
}

ErrorCode set_initial_value(ClColMain& main) {
  const bool may_be_null = is_on(main.current_item()->null_allowed);
  return may_be_null ? reset_settings(main) : error::null_not_allowed;
}

ErrorCode reset_settings(ClColMain& main) {
  ClDGCol& item = *main.current_item();
  const ErrorCode result = main.settings.set_initial_value(item.item_number, item.attributes());
  if (result != error::none) return result;
  item.is_left_out = false;
  ItemDisplay& display = item.display();
  display.generation_type = generation_type::initial_value;
  display.generation_text = initial_value_text(main.layout_kind());
  display.start.clear();
  display.end.clear();
  display.increment.clear();
  display.exceeded_action = exceeded_action::initialize;
  return error::none;
}

void set_enumeration(ClColMain& main, const std::string& path, ExceededAction exceeded_action) {
  ClDGCol& item = *main.current_item();
  main.settings.set_enumeration(item.item_number, path, exceeded_action);
  ItemDisplay& display = item.display();
  display.generation_type = generation_type::enumeration;
  display.generation_text = enumeration_text;
  display.enumeration_name = platform::base_name(path);
  display.enumeration_path = path;
  display.exceeded_action = exceeded_action;
}

ErrorCode store_format(ClColMain& main, const RangeTexts& texts, bool initializes, bool is_custom) {
  ClDGCol& item = *main.current_item();
  EditedSettings& edited = main.settings.edited();
  edited.choices.exceeded_action =
      initializes ? exceeded_action::initialize : exceeded_action::repeat;
  edited.choices.custom_format = flag_of(is_custom);
  edited.texts = texts;
  const ErrorCode result = main.settings.check_and_store(item.item_number, item.attributes());
  if (result != error::none) return result;

  item.is_left_out = false;
  ItemDisplay& display = item.display();
  const bool has_values = edited.variable_count > 0;
  display.generation_type = generation_type::range;
  display.generation_text = edited.texts.format;
  display.start = has_values ? edited.texts.start : "";
  display.end = has_values ? edited.texts.end : "";
  display.increment = has_values ? edited.texts.increment : "";
  display.exceeded_action = edited.choices.exceeded_action;
  display.is_custom = is_on(edited.choices.custom_format);
  return error::none;
}

ErrorCode check_copy(const ClColMain& main, std::size_t source_index) {
  const ClDGCol& target = *main.current_item();
  ClDGCol& source = *main.items.at(source_index);
  if (source.item_number == target.item_number) return error::same_reference_target;
  if (source.display().generation_type == generation_type::initial_value) {
    return !is_on(target.null_allowed) ? error::null_not_allowed : error::none;
  }
  const ErrorCode result = check_reference(source.attributes(), target.attributes());
  if (result != error::none) return result;
  const ClFmtColInf* settings = main.settings.find_column(source.item_number);
  return settings == nullptr || settings->elements.empty() ? error::format_not_set : error::none;
}

ErrorCode copy_settings(ClColMain& main, std::size_t source_index) {
  ErrorCode result = check_copy(main, source_index);
  if (result != error::none) return result;
  ClDGCol& target = *main.current_item();
  ClDGCol& source = *main.items.at(source_index);
  if (source.display().generation_type == generation_type::initial_value) {
    return set_initial_value(main);
  }
  // A target without settings takes its own attribute, not the source's: a wider one would no
  // longer fit its settings at the next opening.
  result = main.settings.copy_settings(target.item_number, source.item_number, target.attributes());
  if (result != error::none) return result;

  target.is_left_out = false;
  const ItemDisplay& from = source.display();
  ItemDisplay& display = target.display();
  display.generation_type = from.generation_type;
  display.generation_text = from.generation_text;
  display.start = from.start;
  display.end = from.end;
  display.increment = from.increment;
  display.exceeded_action = from.exceeded_action;
  display.is_custom = from.is_custom;
  display.enumeration_name = from.enumeration_name;
  display.enumeration_path = from.enumeration_path;
  return error::none;
}

ErrorCode delete_settings(ClColMain& main) {
  ClDGCol& item = *main.current_item();
  const ErrorCode result = main.settings.delete_settings(item.item_number);
  if (result != error::none) return result;
  item.is_left_out = true;
  ItemDisplay& display = item.display();
  display.generation_text.clear();
  display.start.clear();
  display.end.clear();
  display.increment.clear();
  display.generation_type = generation_type::none;
  return error::none;
}

}  // namespace korvex
