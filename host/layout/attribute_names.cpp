#include "host/layout/attribute_names.h"

#include <algorithm>
#include <array>

namespace korvex::host {

namespace {

struct AttributeName {
  std::string_view name;
  Attribute attribute;
};

constexpr std::array names = std::to_array<AttributeName>({
    {"character", attribute::character},
    {"decimal", attribute::decimal},
    {"plain-character", attribute::plain_character},
    {"national", attribute::national},
    {"number", attribute::number},
    {"integer", attribute::integer},
    {"small-integer", attribute::small_integer},
    {"date", attribute::date},
    {"time", attribute::time},
    {"timestamp", attribute::timestamp},
});

}  // namespace

std::optional<Attribute> attribute_by_name(std::string_view name) {
  const auto row = std::find_if(names.begin(), names.end(),
                                [name](const AttributeName& entry) { return entry.name == name; });
  if (row == names.end()) return std::nullopt;
  return row->attribute;
}

std::string_view attribute_name(Attribute attribute) {
  const auto row = std::find_if(
      names.begin(), names.end(),
      [attribute](const AttributeName& entry) { return entry.attribute == attribute; });
  return row == names.end() ? std::string_view() : row->name;
}

std::string list_attribute_names() {
  std::string list;
  for (const AttributeName& entry : names) {
    if (!list.empty()) list += ", ";
    list.append("\"").append(entry.name).append("\"");
  }
  return list;
}

}  // namespace korvex::host
