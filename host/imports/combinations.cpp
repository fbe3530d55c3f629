#include "host/imports/combinations.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/process/signals.h"
#include "host/sources/saturating.h"

namespace korvex::host {

namespace {

constexpr std::uint64_t most_tried = 2'000'000;
// A prime, so that all members change from one combination to the next.
constexpr std::uint64_t stride = 1'000'003;

// What a part of a combination can be, with the columns that it fills.
struct Member {
  std::vector<std::size_t> columns;
  TextRows rows;
};

std::optional<std::vector<Member>> members_of(const KeyPlan& keys,
                                              const std::map<std::size_t, TextRows>& lists,
                                              const std::vector<std::size_t>& columns,
                                              const std::vector<PlannedItem>& items) {
  std::vector<Member> members;
  for (const std::size_t column : columns) {
    const ColumnRole& role = keys.columns[column];
    if (role.kind == ColumnRole::Kind::key) {
      const auto rows = lists.find(role.key);
      if (rows == lists.end()) return std::nullopt;
      if (role.place == 0) members.push_back({keys.keys[role.key].key->columns, rows->second});
    } else {
      Member member{{column}, {}};
      if (!items[column].values) return std::nullopt;
      for (std::string& value : values_in(*items[column].values)) {
        member.rows.push_back({std::move(value)});
      }
      if (member.rows.empty()) return std::nullopt;
      members.push_back(std::move(member));
    }
  }
  return members;
}

// Up to so many combinations beside those that are held.
TextRows free_rows(const std::vector<Member>& members,
                   const std::set<std::vector<std::string>>& held, std::size_t wanted) {
  std::uint64_t all = 1;
  for (const Member& member : members) all = sources::product(all, member.rows.size());
  const std::uint64_t step = all % stride == 0 ? 1 : stride % all;
  TextRows free;
  std::uint64_t place = 0;
  for (std::uint64_t i = 0; i < std::min(all, most_tried) && free.size() < wanted; ++i) {
    std::vector<std::string> row;
    std::uint64_t rest = place;
    for (const Member& member : members) {
      const auto& part = member.rows[rest % member.rows.size()];
      row.insert(row.end(), part.begin(), part.end());
      rest /= member.rows.size();
    }
    if (!held.contains(row)) free.push_back(std::move(row));
    place = (place + step) % all;
  }
  return free;
}

}  // namespace

std::vector<std::string> values_in(const ColumnValues& values) {
  constexpr std::uint64_t most_numbers = 100'000;
  std::vector<std::string> texts = values.listed;
  const bool is_range_of_numbers =
      is_numeric(values.attributes.attribute) && values.least < values.most;
  if (!texts.empty() || !is_range_of_numbers || values.period > most_numbers) return texts;
  for (std::int64_t unit = values.least; unit <= values.most; ++unit) {
    texts.push_back(decimal_text(unit, values.attributes.decimals));
  }
  return texts;
}

std::set<std::vector<std::string>> held_rows(Database& database, const TableSchema& table,
                                             const std::vector<std::size_t>& columns) {
  ForeignKey own;
  own.quoted_table = table.quoted_name;
  own.columns = columns;
  for (const std::size_t column : columns) {
    own.referenced_columns.push_back(table.columns[column].name);
  }
  std::set<std::vector<std::string>> held;
  database.read_keys(own, [&](const std::vector<std::string_view>& texts) {
    check_interruption();
    held.emplace(texts.begin(), texts.end());
  });
  return held;
}

std::optional<std::uint64_t> combine_lists(const ImportPlan& plan, std::size_t table,
                                           const KeyPlan& keys,
                                           const std::map<std::size_t, TextRows>& lists,
                                           const std::vector<std::size_t>& columns,
                                           std::vector<PlannedItem>& items, PlannedTable& planned) {
  const auto members = members_of(keys, lists, columns, items);
  if (!members) return std::nullopt;
  const TableSchema& schema = plan.model.tables[table].schema;
  std::vector<std::size_t> order;
  std::vector<std::string> names;
  for (const Member& member : *members) {
    for (const std::size_t column : member.columns) {
      order.push_back(column);
      names.push_back(schema.columns[column].name);
    }
  }
  const auto wanted = static_cast<std::size_t>(plan.records[table]);
  const TextRows rows = free_rows(*members, held_rows(plan.database, schema, order), wanted);
  std::vector<ColumnValues> values =
      table_values(rows, names, plan.files[table], names.front(), planned.lists);
  for (std::size_t i = 0; i < order.size(); ++i) {
    PlannedItem& item = items[order[i]];
    if (i == 0) values[i].keys.push_back({"order", toml_text("shuffled")});
    values[i].keys.push_back({"group", toml_text(names.front())});
    item.values = std::move(values[i]);
    item.empty_share.clear();
    item.empty_with.clear();
    item.is_combined = true;
    item.reason = "combinations that no row has yet";
  }
  return rows.size();
}

}  // namespace korvex::host
