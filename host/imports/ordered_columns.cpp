#include "host/imports/ordered_columns.h"

#include <algorithm>
#include <string>

namespace korvex::host {

namespace {

using Order = ColumnOrder::Kind;

constexpr std::int64_t longest_days = 90;
constexpr std::int64_t seconds_of_day = 86'400;
constexpr std::int64_t longest_distance = 100;

std::string value_of(const ColumnValues& values, std::string_view name) {
  for (const LayoutKey& key : values.keys) {
    if (key.name == name) return key.value;
  }
  return {};
}

// Whether a column follows another one, through any number of others.
bool follows(const std::vector<PlannedItem>& items, const TableSchema& schema, std::size_t column,
             std::size_t other) {
  for (std::size_t steps = 0; steps < items.size(); ++steps) {
    if (column == other) return true;
    const std::string of =
        items[column].values ? value_of(*items[column].values, "of") : std::string();
    const auto next =
        std::find_if(schema.columns.begin(), schema.columns.end(),
                     [&](const ColumnSchema& each) { return toml_text(each.name) == of; });
    if (of.empty() || next == schema.columns.end()) return false;
    column = static_cast<std::size_t>(next - schema.columns.begin());
  }
  return true;
}

// Numbers of as many decimals, or days, or moments: what an offset can go between.
bool are_alike(const PlannedItem& left, const PlannedItem& right) {
  return left.values && right.values && left.values->is_measured && right.values->is_measured &&
         left.values->attributes.attribute == right.values->attributes.attribute &&
         left.values->attributes.decimals == right.values->attributes.decimals;
}

std::int64_t longest_of(const ColumnSchema& column) {
  if (column.type == ColumnType::date) return longest_days;
  return column.type == ColumnType::timestamp ? longest_days * seconds_of_day : longest_distance;
}

// The later column begins where the earlier one is, and the earlier one ends early enough.
void make_offset(const TableSchema& schema, const ColumnOrder& order,
                 std::vector<PlannedItem>& items) {
  PlannedItem& left = items[order.left];
  PlannedItem& right = items[order.right];
  if (order.kind == Order::equal) {
    right.values->attributes = left.values->attributes;
    right.values->keys = {{"type", toml_text("reference")},
                          {"item", toml_text(schema.columns[order.left].name)}};
    return;
  }
  const std::int64_t least = order.kind == Order::less ? 1 : 0;
  const ColumnType type = schema.columns[order.right].type;
  const bool is_moment = type == ColumnType::date || type == ColumnType::timestamp;
  if (!is_moment && left.values->attributes.length < right.values->attributes.length) {
    left.values->attributes = right.values->attributes;
  }
  right.values->attributes = left.values->attributes;
  if (!is_moment) ++right.values->attributes.length;
  if (!is_moment) ++right.values->attributes.digits;
  right.values->keys = {{"type", toml_text("offset")},
                        {"of", toml_text(schema.columns[order.left].name)},
                        {"from", std::to_string(least)},
                        {"to", std::to_string(longest_of(schema.columns[order.right]))}};
  // A value that must be there needs one to start from.
  if (!right.is_nullable) left.empty_share.clear();
  right.reason = "not before " + schema.columns[order.left].name;
}

}  // namespace

void follow_orders(const ImportedTable& table, std::vector<PlannedItem>& items) {
  std::vector<bool> is_placed(items.size());
  for (const ColumnOrder& order : table.facts.orders) {
    if (order.kind == Order::unequal || !are_alike(items[order.left], items[order.right])) continue;
    if (is_placed[order.right] || follows(items, table.schema, order.left, order.right)) continue;
    is_placed[order.right] = true;
    make_offset(table.schema, order, items);
  }
}

}  // namespace korvex::host
