#include "host/imports/ordered_columns.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "courses/calendar.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

using Relation = ColumnOrder::Kind;

constexpr std::int64_t longest_days = 90;
constexpr std::int64_t longest_hours = 2;  // of times, which are to stay on one day
constexpr std::int64_t seconds_of_hour = 3600;

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

void make_equal(const TableSchema& schema, std::size_t left, PlannedItem& item,
                const PlannedItem& other) {
  item.values->attributes = other.values->attributes;
  item.values->keys = {{"type", toml_text("reference")},
                       {"item", toml_text(schema.columns[left].name)}};
  item.empty_share.clear();
}

// Of numbers: how far apart they may be, so that both stay where they are allowed.
std::int64_t make_room(const ImportedTable& table, const ColumnOrder& order, ColumnValues& left,
                       const ColumnValues& right) {
  const ColumnFacts& facts = table.facts.columns[order.right];
  std::int64_t distance = std::max<std::int64_t>((left.most - left.least) / 4, 1);
  if (!facts.is_bounded()) return distance;
  const std::int64_t least = facts.least ? std::max(left.least, right.least) : left.least;
  std::int64_t most = left.most;
  if (facts.most) {
    distance = std::max<std::int64_t>((right.most - least) / 2, 1);
    most = std::min(most, right.most - distance);
  }
  if (most <= least) return distance;
  const int decimals = left.attributes.decimals;
  left = number_values(least, most, decimals, false);
  return distance;
}

// The later column begins where the earlier one is.
void make_offset(const ImportedTable& table, const ColumnOrder& order,
                 std::vector<PlannedItem>& items) {
  const ColumnSchema& column = table.schema.columns[order.right];
  PlannedItem& left = items[order.left];
  PlannedItem& right = items[order.right];
  const std::int64_t least = order.gap + (order.kind == Relation::less ? 1 : 0);
  const auto attribute = left.values->attributes.attribute;
  const bool is_date = attribute == attribute::date;
  const bool is_time = attribute == attribute::time;
  const bool is_moment = is_date || is_time || attribute == attribute::timestamp;
  std::string from = std::to_string(least);
  std::string to;
  if (is_moment) {
    const std::int64_t days = order.days > 0
                                  ? order.days
                                  : order.gap + std::max<std::int64_t>(longest_days, order.gap / 2);
    if (!is_date && !is_time)
      from = std::to_string(order.gap * seconds_per_day + least - order.gap);
    to = std::to_string(is_date   ? days
                        : is_time ? longest_hours * seconds_of_hour
                                  : days * seconds_per_day);
  } else {
    const std::int64_t distance = make_room(table, order, *left.values, *right.values);
    const int decimals = left.values->attributes.decimals;
    const std::int64_t nearest =
        order.gap * platform::power_of_ten<std::int64_t>(decimals) + least - order.gap;
    from = decimal_text(nearest, decimals);
    to = decimal_text(std::max(distance, nearest), decimals);
  }
  right.values->attributes = left.values->attributes;
  if (!is_moment) ++right.values->attributes.length;
  if (!is_moment) ++right.values->attributes.digits;
  right.values->keys = {{"type", toml_text("offset")},
                        {"of", toml_text(table.schema.columns[order.left].name)},
                        {"from", from},
                        {"to", to}};
  // A value that must be there needs one to start from.
  const bool must_be_there = !column.nullable || right.is_referenced || right.is_needed ||
                             table.facts.columns[order.right].is_never_null;
  if (must_be_there) {
    left.empty_share.clear();
    left.is_needed = true;
  }
  right.reason = "not before " + table.schema.columns[order.left].name;
}

// What a column that follows another one begins with.
std::size_t root_of(const TableSchema& schema, const std::vector<PlannedItem>& items,
                    std::size_t column) {
  for (std::size_t steps = 0; steps < items.size(); ++steps) {
    const std::string of = value_of(*items[column].values, "of");
    const auto next =
        std::find_if(schema.columns.begin(), schema.columns.end(),
                     [&](const ColumnSchema& each) { return toml_text(each.name) == of; });
    if (of.empty() || next == schema.columns.end()) break;
    column = static_cast<std::size_t>(next - schema.columns.begin());
  }
  return column;
}

}  // namespace

void follow_orders(const std::vector<ColumnOrder>& orders, const ImportedTable& table,
                   std::vector<PlannedItem>& items) {
  std::vector<bool> is_placed(items.size());
  for (const ColumnOrder& asked : orders) {
    ColumnOrder order = asked;
    if (order.kind == Relation::unequal || !are_alike(items[order.left], items[order.right]))
      continue;
    // A column that follows another one already comes after this one, too, if that one does.
    if (is_placed[order.right] && !order.is_guess && order.kind != Relation::equal) {
      order.right = root_of(table.schema, items, order.right);
    }
    if (is_placed[order.right] || follows(items, table.schema, order.left, order.right)) continue;
    if (order.is_guess && table.facts.columns[order.right].is_bounded()) continue;
    is_placed[order.right] = true;
    if (order.kind == Relation::equal) {
      make_equal(table.schema, order.left, items[order.right], items[order.left]);
    } else {
      make_offset(table, order, items);
    }
  }
}

}  // namespace korvex::host
