#include "dialogs/rules/setup_fields.h"

#include "control/item_settings.h"
#include "dialogs/rules/initial_settings.h"
#include "values/records.h"

namespace korvex {

namespace {

// A settings file may hold any number; what is no action is shown as no choice.
std::optional<ExceededAction> shown_choice(ExceededAction action) {
  const bool is_action = action == exceeded_action::initialize || action == exceeded_action::repeat;
  return is_action ? std::optional(action) : std::nullopt;
}

bool is_format(std::string_view generation_text) {
  return !generation_text.empty() && generation_text != enumeration_text &&
         generation_text != initial_value_text(layout_kind::record_file) &&
         generation_text != initial_value_text(layout_kind::table);
}

void fill_if_empty(std::string& text, std::string_view proposal) {
  if (text.empty()) text = proposal;
}

// Only what the type takes over from `stored` counts.
bool differ(const SetupFields& fields, const SetupFields& stored) {
  if (fields.type_index != stored.type_index) return true;
  switch (stored.type_index) {
    case type_entry::range:
      return fields.format != stored.format || fields.custom != stored.custom ||
             fields.start != stored.start || fields.end != stored.end ||
             fields.increment != stored.increment || fields.exceeded != stored.exceeded;
    case type_entry::reference:
      return fields.reference != stored.reference;
    case type_entry::enumeration:
      // Files of one name may lie in two folders.
      return fields.enumeration_name != stored.enumeration_name ||
             fields.enumeration_path != stored.enumeration_path ||
             fields.exceeded != stored.exceeded;
    default:
      return false;
  }
}

}  // namespace

SetupFields fields_of(const ItemDisplay& display, const SetupFields& before) {
  SetupFields fields;
  fields.exceeded = shown_choice(display.exceeded_action);
  switch (display.generation_type) {
    case generation_type::initial_value:
      fields.type_index = type_entry::initial_value;
      fields.exceeded = before.exceeded;
      break;
    case generation_type::range:
      fields.type_index = type_entry::range;
      fields.format = display.generation_text;
      fields.custom = display.is_custom;
      fields.start = display.start;
      fields.end = display.end;
      fields.increment = display.increment;
      break;
    case generation_type::reference:
      fields.type_index = type_entry::reference;
      fields.reference = display.generation_text;
      break;
    case generation_type::enumeration:
      fields.type_index = type_entry::enumeration;
      fields.enumeration_name = display.enumeration_name;
      fields.enumeration_path = display.enumeration_path;
      break;
    default:
      fields.exceeded.reset();
      break;
  }
  return fields;
}

void confirm_type(SetupFields& fields, ClDGCol& item) {
  fields.reference.clear();
  fields.enumeration_name.clear();
  const ItemDisplay& stored = item.display();
  if (fields.type_index == type_entry::range) {
    fill_if_empty(fields.format, is_format(stored.generation_text)
                                     ? stored.generation_text
                                     : default_format(item.attributes()));
    fill_if_empty(fields.start, stored.start);
    fill_if_empty(fields.end, stored.end);
    fill_if_empty(fields.increment, stored.increment);
    fill_if_empty(fields.increment, first_increment);
  }
  if (fields.type_index == type_entry::range || fields.type_index == type_entry::enumeration) {
    fields.exceeded = shown_choice(stored.exceeded_action);
  }
}

std::optional<std::size_t> index_of_item(const ClDGColList& items, std::string_view name) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i]->name == name) return i;
  }
  return std::nullopt;
}

bool is_changed(const SetupFields& fields, ClColMain& main) {
  const ItemDisplay& shown = main.current_item()->display();
  const SetupFields stored = fields_of(shown, {});
  if (fields.type_index != type_entry::reference || stored.type_index == type_entry::reference) {
    return differ(fields, stored);
  }
  // A reference takes over the settings of its source as they are.
  const std::optional<std::size_t> source = index_of_item(main.items, fields.reference);
  if (!source || shown.generation_type == generation_type::none) return true;
  return differ(fields_of(main.items[*source]->display(), {}), stored);
}

SetupEnablement enablement(const SetupFields& fields, GenerationType generation_type,
                           bool enumeration_name_shown) {
  SetupEnablement enabled;
  if (fields.type_index < type_entry::initial_value ||
      fields.type_index > type_entry::enumeration) {
    return enabled;
  }
  enabled.remove = generation_type != generation_type::none;
  enabled.setup = true;
  enabled.reference = fields.type_index == type_entry::reference;
  enabled.enumeration = fields.type_index == type_entry::enumeration;
  if (enabled.enumeration) {
    enabled.browse.reset();
    if (enumeration_name_shown) enabled.browse = true;
  }
  enabled.custom = fields.type_index == type_entry::range;
  enabled.values = enabled.custom;
  enabled.format = enabled.custom && fields.custom;
  enabled.exceeded = enabled.values || enabled.enumeration;
  return enabled;
}

}  // namespace korvex
