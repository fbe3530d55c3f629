#include "host/layout/item_reader.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "control/col_main.h"
#include "control/control_file.h"
#include "host/layout/attribute_names.h"
#include "host/layout/character_text.h"
#include "host/layout/item_size.h"
#include "host/layout/path_reader.h"
#include "values/records.h"

namespace korvex::host {

namespace {

// Texts must leave room for the terminator of their field.
constexpr std::size_t longest_name = sizeof(ControlItem::name) - 1;
constexpr std::size_t longest_description = sizeof(ControlItem::description) - 1;
constexpr std::size_t longest_format = format_text_size - 1;
constexpr std::size_t longest_enumeration_path = enumeration_path_size - 1;

constexpr const char* default_increment = "1";
constexpr std::array<std::string_view, 2> exceeded_names = {"initialize", "repeat"};

// A type of values and the keys of [item.values] that mean something for it.
struct ValueType {
  std::string_view name;
  ValueSource source;
  std::span<const std::string_view> keys;
};

constexpr std::array<std::string_view, 6> range_keys = {"format",    "start",    "end",
                                                        "increment", "exceeded", "custom"};
constexpr std::array<std::string_view, 1> reference_keys = {"item"};
constexpr std::array<std::string_view, 2> enumeration_keys = {"file", "exceeded"};

constexpr std::array value_types = std::to_array<ValueType>({
    {"initial", ValueSource::initial, {}},
    {"range", ValueSource::range, range_keys},
    {"reference", ValueSource::reference, reference_keys},
    {"enumeration", ValueSource::enumeration, enumeration_keys},
    {"default", ValueSource::attribute_default, {}},
});

bool takes_key(const ValueType& type, std::string_view key) {
  return std::find(type.keys.begin(), type.keys.end(), key) != type.keys.end();
}

std::int32_t read_attribute(TableReader& reader) {
  constexpr std::string_view key = "attribute";
  const std::string expected = "a code from 1 to " + std::to_string(attribute::highest) +
                               " or one of " + list_attribute_names();
  reader.require(key, expected);
  const toml::node* node = reader.find(key);
  if (node == nullptr) return 0;
  if (const auto* code = node->as_integer();
      code != nullptr && code->get() >= 1 && code->get() <= attribute::highest) {
    return static_cast<std::int32_t>(code->get());
  }
  if (const auto* name = node->as_string()) {
    if (const auto code = attribute_by_name(name->get())) return *code;
  }
  reader.report_type(key, *node, expected);
  return 0;
}

void read_attributes(TableReader& reader, std::int32_t kind, LayoutItem& layout_item) {
  const std::size_t errors_before = reader.error_count();
  ItemAttributes& item = layout_item.attributes;
  item.attribute = read_attribute(reader);
  const bool is_signed = reader.boolean("signed").value_or(false);
  item.signed_flag = is_signed || is_always_signed(item.attribute) ? 1 : 0;
  const GivenSize given = {reader.integer("digits", 0), reader.integer("length", 0)};
  const std::int32_t decimals = reader.integer("decimals", 0).value_or(0);
  item.decimals = decimals;
  if (reader.error_count() != errors_before) return;

  if (const auto wrong = complete_size(given, item)) {
    reader.report(reader.place(wrong->key), wrong->text);
  }
  layout_item.has_invalid_digits = has_invalid_digits(kind, item.digits, decimals);
}

const ValueType* read_type(TableReader& reader) {
  constexpr std::string_view key = "type";
  std::array<std::string_view, value_types.size()> names;
  std::transform(value_types.begin(), value_types.end(), names.begin(),
                 [](const ValueType& type) { return type.name; });
  reader.require(key, "one of " + list_names(names));
  const auto index = reader.choice(key, names);
  if (!index) return nullptr;
  return &value_types[*index];
}

void reject_keys_of_other_types(TableReader& reader, const ValueType& own) {
  for (const ValueType& other : value_types) {
    for (const std::string_view key : other.keys) {
      if (!reader.has(key) || takes_key(own, key)) continue;
      reader.report(reader.place(key), std::string(key) + " stands beside type \"" +
                                           std::string(own.name) + "\", expected type \"" +
                                           std::string(other.name) + "\"");
    }
  }
}

void read_exceeded(TableReader& reader, ItemValues& values) {
  const auto exceeded = reader.choice("exceeded", exceeded_names);
  values.choices.exceeded_action =
      exceeded ? static_cast<std::int32_t>(*exceeded) : exceeded_action::repeat;
}

void read_range(TableReader& reader, ItemValues& values) {
  reader.require("format", "a format such as \"%5U\"");
  values.texts.format =
      character_text(reader, "format", reader.text("format"), longest_format, &values.replaced);
  values.texts.start =
      character_text(reader, "start", reader.text_or_integer("start"), unbounded, &values.replaced);
  values.texts.end =
      character_text(reader, "end", reader.text_or_integer("end"), unbounded, &values.replaced);
  values.texts.increment = default_increment;
  if (reader.has("increment")) {
    values.texts.increment =
        character_text(reader, "increment", reader.text_or_integer("increment"), unbounded);
  }
  const auto place = [&](std::string_view key) {
    return reader.has(key) ? reader.place(key) : SourcePlace{};
  };
  values.places = {place("format"), place("start"), place("end"), place("increment")};
  read_exceeded(reader, values);
  values.choices.custom_format = reader.boolean("custom").value_or(true) ? 1 : 0;
}

void read_reference(TableReader& reader, ItemValues& values) {
  reader.require("item", "the name of another item");
  values.item_name = character_text(reader, "item", reader.text("item"), longest_name);
  values.origin = reader.place("item");
}

void read_enumeration(TableReader& reader, const std::string& layout_file, ItemValues& values) {
  reader.require("file", "the path of a text file with a value a line");
  // The settings file outlives the folder that the program happens to run in.
  values.file = read_path(reader, "file", layout_file);
  values.origin = reader.place("file");
  if (!values.file.empty()) values.file = std::filesystem::absolute(values.file).string();
  if (values.file.size() > longest_enumeration_path) {
    reader.report(reader.place("file"),
                  "file leads to a path of " + std::to_string(values.file.size()) +
                      " bytes, expected at most " + std::to_string(longest_enumeration_path));
  }
  read_exceeded(reader, values);
}

void read_repeat(TableReader& values_reader, ItemValues& values, std::vector<LayoutError>& errors) {
  const toml::table* table = values_reader.table("repeat");
  if (table == nullptr) return;
  if (values.source == ValueSource::initial) {
    values_reader.report(values_reader.place("repeat"),
                         "repeat stands beside type \"initial\", expected another type");
  }
  TableReader reader(*table, "repeat", errors);
  reader.require("level", "the level of the repeat, 1 for the outermost");
  reader.require("count", "how often the values repeat");
  const SourcePlace place = reader.place("level");
  values.repeat = RepeatSettings{reader.integer("level", 0).value_or(0),
                                 reader.integer("count", 0).value_or(0), place};
  reader.reject_unknown_keys();
}

ItemValues read_values(const toml::table& table, const std::string& layout_file,
                       std::vector<LayoutError>& errors) {
  TableReader reader(table, "[item.values]", errors);
  ItemValues values;
  values.place = reader.place();
  for (const ValueType& type : value_types) {
    for (const std::string_view key : type.keys) reader.find(key);
  }
  reader.find("repeat");
  if (const ValueType* type = read_type(reader)) {
    values.source = type->source;
    reject_keys_of_other_types(reader, *type);
    if (values.source == ValueSource::range) read_range(reader, values);
    if (values.source == ValueSource::reference) read_reference(reader, values);
    if (values.source == ValueSource::enumeration) read_enumeration(reader, layout_file, values);
    read_repeat(reader, values, errors);
  }
  reader.reject_unknown_keys();
  return values;
}

}  // namespace

LayoutItem read_item(const toml::table& table, const Layout& layout, std::int32_t position,
                     std::vector<LayoutError>& errors) {
  TableReader reader(table, "[[item]]", errors);
  LayoutItem item;
  item.place = reader.place();
  item.number = reader.integer("number", 0).value_or(position);
  reader.require("name", "a string");
  item.name = character_text(reader, "name", reader.text("name"), longest_name);
  item.description =
      character_text(reader, "description", reader.text("description"), longest_description);
  read_attributes(reader, layout.kind, item);
  item.nullable = reader.boolean("nullable").value_or(true);
  if (const toml::table* values = reader.table("values")) {
    item.values = read_values(*values, layout.file, errors);
  }
  reader.reject_unknown_keys();
  return item;
}

}  // namespace korvex::host
