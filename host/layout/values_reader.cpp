#include <algorithm>
#include <array>

#include "host/layout/item_reader.h"
#include "host/layout/value_types.h"

namespace korvex::host {

namespace {

const ValueType* read_type(TableReader& reader) {
  constexpr std::string_view key = "type";
  std::array<std::string_view, value_types.size()> names;
  std::transform(value_types.begin(), value_types.end(), names.begin(),
                 [](const ValueType* type) { return type->name; });
  reader.require(key, "one of " + list_names(names));
  const auto index = reader.choice(key, names);
  if (!index) return nullptr;
  return value_types[*index];
}

bool takes_key(const ValueType& type, std::string_view key) {
  return std::find(type.keys.begin(), type.keys.end(), key) != type.keys.end();
}

void reject_keys_of_other_types(TableReader& reader, const toml::table& table,
                                const ValueType& own) {
  for (const auto& [name, node] : table) {
    const std::string_view key = name.str();
    if (takes_key(own, key)) continue;
    std::string takers;
    for (const ValueType* type : value_types) {
      if (!takes_key(*type, key)) continue;
      takers += (takers.empty() ? "\"" : " or \"") + std::string(type->name) + '"';
    }
    if (takers.empty()) continue;
    reader.report(reader.place(key), std::string(key) + " is given together with type \"" +
                                         std::string(own.name) + "\", expected type " + takers);
  }
}

void read_repeat(TableReader& values_reader, ItemValues& values, std::vector<LayoutError>& errors) {
  const toml::table* table = values_reader.table("repeat");
  if (table == nullptr) return;
  if (values.source == ValueSource::initial) {
    values_reader.report(values_reader.place("repeat"),
                         "repeat is given together with type \"initial\", expected another type");
  } else if (!values.own_keys.empty()) {
    values_reader.report(values_reader.place("repeat"), "repeat is given together with " +
                                                            values.own_keys.front().key +
                                                            ", expected one of the two");
  }
  TableReader reader(*table, "repeat", errors);
  reader.require("level", "the level of the repeat, 1 for the outermost");
  reader.require("count", "how often the values repeat");
  const SourcePlace place = reader.place("level");
  values.repeat = RepeatSettings{RepeatLevel{reader.integer("level", 0).value_or(0)},
                                 reader.integer("count", 0).value_or(0), place};
  reader.reject_unknown_keys();
}

}  // namespace

ItemValues read_values(const toml::table& table, const Layout& layout,
                       std::vector<LayoutError>& errors) {
  TableReader reader(table, "[item.values]", errors);
  ItemValues values;
  values.place = reader.place();
  for (const ValueType* type : value_types) reader.know(type->keys);
  constexpr std::string_view repeat_key[] = {"repeat"};
  reader.know(repeat_key);
  if (const ValueType* type = read_type(reader)) {
    values.source = type->source;
    if (type->source == ValueSource::own) {
      values.own_keys.push_back(
          {"type", reader.place("type"), "type \"" + std::string(type->name) + '"'});
    }
    reject_keys_of_other_types(reader, table, *type);
    type->read({reader, layout, values, errors});
    read_way(reader, *type, values, errors);
    read_repeat(reader, values, errors);
  } else {
    know_way_keys(reader);
  }
  reader.reject_unknown_keys();
  return values;
}

}  // namespace korvex::host
