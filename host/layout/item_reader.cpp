#include "host/layout/item_reader.h"

#include "control/col_main.h"
#include "host/layout/code_names.h"
#include "host/layout/item_size.h"
#include "host/layout/item_texts.h"

namespace korvex::host {

namespace {

Attribute read_attribute(TableReader& reader) {
  constexpr std::string_view key = "attribute";
  const std::string expected = "a code from 1 to " + std::to_string(number_of(attribute::highest)) +
                               " or one of " + list_attribute_names();
  reader.require(key, expected);
  const toml::node* node = reader.find(key);
  if (node == nullptr) return attribute::none;
  if (const auto* code = node->as_integer();
      code != nullptr && code->get() >= 1 && code->get() <= number_of(attribute::highest)) {
    return static_cast<Attribute>(code->get());
  }
  if (const auto* name = node->as_string()) {
    if (const auto code = attribute_by_name(name->get())) return *code;
  }
  reader.report_type(key, *node, expected);
  return attribute::none;
}

void read_attributes(TableReader& reader, LayoutKind kind, LayoutItem& layout_item) {
  const std::size_t errors_before = reader.error_count();
  ItemAttributes& item = layout_item.attributes;
  item.attribute = read_attribute(reader);
  const bool is_signed = reader.boolean("signed").value_or(false);
  item.signed_flag = flag_of(is_signed || is_always_signed(item.attribute));
  const GivenSize given = {reader.integer("digits", 0), reader.integer("length", 0)};
  const std::int32_t decimals = reader.integer("decimals", 0).value_or(0);
  item.decimals = decimals;
  if (reader.error_count() != errors_before) return;

  if (const auto wrong = complete_size(given, item)) {
    reader.report(reader.place(wrong->key), wrong->text);
  }
  layout_item.has_invalid_digits = has_invalid_digits(kind, item.digits, decimals);
}

}  // namespace

LayoutItem read_item(const toml::table& table, const Layout& layout, std::int32_t position,
                     std::vector<LayoutError>& errors) {
  TableReader reader(table, "[[item]]", errors);
  LayoutItem item;
  item.place = reader.place();
  item.number = ItemNumber{reader.integer("number", 0).value_or(position)};
  reader.require("name", "a string");
  item.name = item_text(reader, layout, "name", longest_item_name, &item.beyond_code_page);
  item.description =
      item_text(reader, layout, "description", longest_item_description, &item.beyond_code_page);
  read_attributes(reader, layout.kind, item);
  item.nullable = reader.boolean("nullable").value_or(true);
  if (const toml::table* values = reader.table("values")) {
    item.values = std::make_shared<const ItemValues>(read_values(*values, layout, errors));
  }
  reader.reject_unknown_keys();
  return item;
}

}  // namespace korvex::host
