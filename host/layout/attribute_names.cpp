#include "host/layout/attribute_names.h"

#include <algorithm>
#include <array>

#include "values/attributes.h"

namespace korvex::host {

namespace {

struct AttributeName {
  std::string_view name;
  std::int32_t code;
};

constexpr std::array names = std::to_array<AttributeName>({
    {"character", 1},
    {"decimal", 4},
    {"plain-character", 6},
    {"national", 11},
    {"number", 19},
    {"integer", attribute::integer},
    {"small-integer", attribute::small_integer},
    {"date", attribute::date},
    {"time", attribute::time},
    {"timestamp", attribute::timestamp},
});

}  // namespace

std::optional<std::int32_t> attribute_by_name(std::string_view name) {
  const auto row = std::find_if(names.begin(), names.end(),
                                [name](const AttributeName& entry) { return entry.name == name; });
  if (row == names.end()) return std::nullopt;
  return row->code;
}

std::string_view attribute_name(std::int32_t code) {
  const auto row = std::find_if(names.begin(), names.end(),
                                [code](const AttributeName& entry) { return entry.code == code; });
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
