#include "host/imports/key_items.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/imports/lists.h"
#include "host/process/signals.h"
#include "host/sources/saturating.h"
#include "host/ways/mixing.h"

namespace korvex::host {

namespace {

// A list is read whole by whoever uses it.
constexpr std::size_t most_listed_keys = 100'000;
// An even or steep share of the records to each parent needs room above the mean.
constexpr std::uint64_t room_above_mean = 4;
constexpr std::size_t key_length = 64;  // of an item whose parent is not known yet
constexpr std::int32_t line_digits = 9;

}  // namespace

KeyItems::KeyItems(ImportPlan& plan, std::size_t table, const KeyPlan& keys,
                   std::uint64_t most_in_group, PlannedTable& planned)
    : plan_(plan),
      table_(table),
      schema_(plan.model.tables[table].schema),
      keys_(keys),
      most_in_group_(most_in_group),
      planned_(planned) {}

bool KeyItems::may_be_empty(const KeyUse& use, const std::vector<PlannedItem>& items) const {
  return std::any_of(use.key->columns.begin(), use.key->columns.end(), [&](std::size_t column) {
    return items[column].is_nullable &&
           !plan_.model.tables[table_].facts.columns[column].is_never_null;
  });
}

void KeyItems::add(std::size_t place, std::vector<PlannedItem>& items) {
  const KeyUse& use = keys_.keys[place];
  for (const std::size_t column : use.key->columns) {
    if (items[column].is_empty) return leave_empty(use, items[column].reason, items);
  }
  if (is_list(place)) {
    add_list(place, items);
  } else if (use.parent == table_) {
    add_own(use, items);
  } else {
    add_layout(use, items);
  }
}

bool KeyItems::is_list(std::size_t place) const {
  const KeyUse& use = keys_.keys[place];
  if (use.takes_rows) return true;
  return use.parent == table_ && plan_.form == DraftForm::settings &&
         plan_.model.tables[table_].rows > 0;
}

void KeyItems::add_layout(const KeyUse& use, std::vector<PlannedItem>& items) {
  const TableSchema& parent = plan_.model.tables[use.parent].schema;
  const auto planned = plan_.planned.find(use.parent);
  for (std::size_t place = 0; place < use.key->columns.size(); ++place) {
    const std::string& name = use.key->referenced_columns[place];
    ColumnValues values;
    values.attributes = text_attributes(key_length);
    const auto column = std::find_if(parent.columns.begin(), parent.columns.end(),
                                     [&](const ColumnSchema& each) { return each.name == name; });
    if (planned != plan_.planned.end() && column != parent.columns.end()) {
      const auto i = static_cast<std::size_t>(column - parent.columns.begin());
      if (planned->second.attributes[i]) values.attributes = *planned->second.attributes[i];
    }
    values.keys = {{"type", toml_text("key")},
                   {"layout", toml_text(plan_.files[use.parent])},
                   {"item", toml_text(name)}};
    items[use.key->columns[place]].values = std::move(values);
  }
  finish(use, items);
}

// Records of this very layout, which earlier ones point to: a tree. Its root has no parent, or is
// its own.
void KeyItems::add_own(const KeyUse& use, std::vector<PlannedItem>& items) {
  const bool has_root = may_be_empty(use, items);
  if (has_root && plan_.form == DraftForm::settings) {
    return leave_empty(use, "refers to " + use.key->table + ", which has no rows yet", items);
  }
  for (std::size_t place = 0; place < use.key->columns.size(); ++place) {
    PlannedItem& item = items[use.key->columns[place]];
    const std::string& name = use.key->referenced_columns[place];
    ColumnValues values;
    values.attributes = text_attributes(key_length);
    for (std::size_t i = 0; i < schema_.columns.size(); ++i) {
      if (schema_.columns[i].name == name && items[i].values) {
        values.attributes = items[i].values->attributes;
      }
    }
    if (has_root && !use.is_unique) {
      values.keys = {{"type", toml_text("key")},
                     {"layout", toml_text(plan_.files[table_])},
                     {"item", toml_text(name)},
                     {"order", toml_text("random")}};
      item.empty_share.clear();
      item.reason = "an earlier record: a tree";
    } else {
      values.keys = {{"type", toml_text("reference")}, {"item", toml_text(name)}};
      item.empty_share.clear();
      item.reason = "each record is its own parent";
    }
    item.values = std::move(values);
  }
}

// Whether the conditions of the columns allow a key.
bool KeyItems::is_allowed(const KeyUse& use, const std::vector<std::string>& row) const {
  const std::vector<ColumnFacts>& facts = plan_.model.tables[table_].facts.columns;
  for (std::size_t place = 0; place < row.size(); ++place) {
    if (!allows(facts[use.key->columns[place]], row[place])) return false;
  }
  return true;
}

// The rows that are there, or as many as a list may have; those that a unique key has are not free.
std::optional<TextRows> KeyItems::read_rows(const KeyUse& use, std::vector<PlannedItem>& items) {
  const std::string& table = use.key->table;
  const bool is_encoded = plan_.form == DraftForm::settings;
  std::int64_t unfit = 0;
  TextRows rows;
  std::set<std::vector<std::string>> taken;
  const auto read = [&](const ForeignKey& key, const auto& take) {
    plan_.database.read_keys(key, [&](const std::vector<std::string_view>& texts) {
      check_interruption();
      std::vector<std::string> row;
      for (const std::string_view text : texts) {
        auto line = list_line(text, is_encoded);
        if (line) row.push_back(std::move(*line));
      }
      if (row.size() < texts.size()) {
        ++unfit;
      } else {
        take(std::move(row));
      }
    });
  };
  try {
    if (use.is_unique && plan_.model.tables[table_].rows > 0) {
      ForeignKey own = *use.key;
      own.quoted_table = schema_.quoted_name;
      own.referenced_columns.clear();
      for (const std::size_t column : use.key->columns) {
        own.referenced_columns.push_back(schema_.columns[column].name);
      }
      read(own, [&](std::vector<std::string> row) { taken.insert(std::move(row)); });
    }
    read(*use.key, [&](std::vector<std::string> row) {
      const bool has_room = is_encoded || rows.size() < most_listed_keys;
      if (has_room && is_allowed(use, row) && !taken.contains(row)) rows.push_back(std::move(row));
    });
  } catch (const KeysUnreadable& failure) {
    leave_empty(use, "refers to " + table + ", which cannot be read: " + failure.what(), items);
    return std::nullopt;
  }
  if (unfit > 0) {
    planned_.remarks.push_back(column_names(schema_, use.key->columns) + ": keys of " + table +
                               " left out, as a list cannot hold them: " + std::to_string(unfit));
  }
  if (!rows.empty()) return rows;
  const std::string why = unfit > 0       ? "none of whose keys can be in a list"
                          : taken.empty() ? "which has no rows yet (load " + table + " first)"
                                          : "which has no unused keys";
  leave_empty(use, "refers to " + table + ", " + why, items);
  planned_.is_full = !taken.empty() && items[use.key->columns.front()].is_gap;
  return std::nullopt;
}

void KeyItems::add_list(std::size_t place, std::vector<PlannedItem>& items) {
  const KeyUse& use = keys_.keys[place];
  auto rows = read_rows(use, items);
  if (!rows) return;
  if (plan_.form == DraftForm::ways) {
    add_table(use, *rows, items);
  } else {
    add_columns(use, *rows, items);
  }
  for (const std::size_t column : use.key->columns) items[column].values->period = rows->size();
  finish(use, items);
  lists_[place] = std::move(*rows);
}

void KeyItems::add_table(const KeyUse& use, const TextRows& rows, std::vector<PlannedItem>& items) {
  const std::vector<ColumnValues> values =
      table_values(rows, use.key->referenced_columns, plan_.files[table_],
                   schema_.columns[use.key->columns.front()].name, planned_.lists);
  for (std::size_t i = 0; i < values.size(); ++i) items[use.key->columns[i]].values = values[i];
}

// Lists that go side by side, so that a record's values are those of one row.
void KeyItems::add_columns(const KeyUse& use, const TextRows& rows,
                           std::vector<PlannedItem>& items) {
  for (std::size_t place = 0; place < use.key->columns.size(); ++place) {
    const std::size_t column = use.key->columns[place];
    ColumnValues values;
    for (const auto& row : rows) values.listed.push_back(row[place]);
    items[column].values = std::move(values);
  }
  if (use.key->columns.size() == 1) return;
  planned_.layout.remarks.push_back(column_names(schema_, use.key->columns) +
                                    ": together the key of " + use.key->table +
                                    ", their lists belong together line by line");
}

void KeyItems::leave_empty(const KeyUse& use, const std::string& why,
                           std::vector<PlannedItem>& items) {
  const bool is_allowed = may_be_empty(use, items);
  for (const std::size_t column : use.key->columns) {
    PlannedItem& item = items[column];
    item.is_empty = true;
    item.values.reset();
    item.reason = why;
    item.is_gap = !is_allowed;
  }
}

// The way of all items of a key, which the first of them says.
std::vector<LayoutKey> KeyItems::way_of(const KeyUse& use) const {
  if (use.is_unique) return {{"order", toml_text("shuffled")}};
  if (!use.joint.empty()) return {{"joint", toml_text(use.joint)}};
  if (use.has_within) {
    const std::size_t hub = keys_.keys[*keys_.hub].key->columns.front();
    return {{"within", toml_text(schema_.columns[hub].name)}};
  }
  if (!use.has_each) return {{"order", toml_text("random")}};
  const auto records = static_cast<std::uint64_t>(plan_.records[table_]);
  const auto parents = static_cast<std::uint64_t>(plan_.records[use.parent]);
  const std::uint64_t most = std::min(most_in_group_, (records / parents + 1) * room_above_mean);
  return {{"each", "{ least = 0, most = " + std::to_string(most) + ", shape = \"zipf\" }"}};
}

void KeyItems::finish(const KeyUse& use, std::vector<PlannedItem>& items) const {
  const std::vector<std::size_t>& columns = use.key->columns;
  for (std::size_t place = 0; place < columns.size(); ++place) {
    PlannedItem& item = items[columns[place]];
    if (place == 0) {
      for (LayoutKey& key : way_of(use)) item.values->keys.push_back(std::move(key));
    }
    if (columns.size() == 1) continue;
    item.values->keys.push_back({"group", toml_text(schema_.columns[columns.front()].name)});
    const bool follows =
        place > 0 && !item.empty_share.empty() && !items[columns.front()].empty_share.empty();
    if (!follows) continue;
    item.empty_share.clear();
    item.empty_with = schema_.columns[columns.front()].name;
  }
}

// The keys of the parent of both columns, where they are known before the parent has its records.
std::optional<KeyItems::CountedKey> KeyItems::counted_parent(const ColumnOrder& order) const {
  const auto use_of = [&](std::size_t column) -> const KeyUse* {
    const ColumnRole& role = keys_.columns[column];
    const bool is_key = role.kind == ColumnRole::Kind::key;
    return is_key && keys_.keys[role.key].key->columns.size() == 1 ? &keys_.keys[role.key]
                                                                   : nullptr;
  };
  const KeyUse* const left = use_of(order.left);
  const KeyUse* const right = use_of(order.right);
  if (left == nullptr || right == nullptr || left->parent != right->parent) return std::nullopt;
  const auto parent = plan_.planned.find(left->parent);
  if (parent == plan_.planned.end() || left->parent == table_) return std::nullopt;
  // Nothing else may go by a group of one of the two.
  for (std::size_t i = 0; i < keys_.columns.size(); ++i) {
    const ColumnRole& role = keys_.columns[i];
    if (role.kind == ColumnRole::Kind::line || role.has_within) return std::nullopt;
  }
  for (const ItemDraft& item : parent->second.layout.items) {
    if (item.name != left->key->referenced_columns.front()) continue;
    const auto start = std::find_if(item.values.begin(), item.values.end(),
                                    [](const LayoutKey& key) { return key.name == "start"; });
    const bool counts_on = std::none_of(item.values.begin(), item.values.end(),
                                        [](const LayoutKey& key) { return key.name == "order"; });
    if (start == item.values.end() || !counts_on || item.attributes.decimals > 0) break;
    return CountedKey{std::atoll(start->value.c_str() + 1), plan_.records[left->parent]};
  }
  return std::nullopt;
}

void KeyItems::pair(const ColumnOrder& order, std::vector<PlannedItem>& items) {
  if (order.kind == ColumnOrder::Kind::equal) return;
  const auto parent = counted_parent(order);
  if (!parent || parent->count < 2) return;
  const auto count = static_cast<std::uint64_t>(parent->count);
  const bool is_ordered = order.kind != ColumnOrder::Kind::unequal;
  const std::uint64_t all = is_ordered ? count * (count - 1) / 2 : count * (count - 1);
  const std::uint64_t wanted = std::min<std::uint64_t>(
      {all, most_listed_keys, static_cast<std::uint64_t>(plan_.records[table_])});
  std::set<std::pair<std::uint64_t, std::uint64_t>> pairs;
  for (std::uint64_t step = 0; pairs.size() < wanted; ++step) {
    std::uint64_t a = ways::absorb(step, 0) % count;
    std::uint64_t b = (a + 1 + ways::absorb(step, 1) % (count - 1)) % count;
    if (is_ordered && a > b) std::swap(a, b);
    pairs.insert({a, b});
  }
  const std::string& left = schema_.columns[order.left].name;
  const std::string& right = schema_.columns[order.right].name;
  const auto key_text = [&](std::uint64_t index) {
    return std::to_string(parent->first + static_cast<std::int64_t>(index));
  };
  TextRows rows;
  for (const auto& [a, b] : pairs) rows.push_back({key_text(a), key_text(b)});
  std::vector<ColumnValues> values =
      table_values(rows, {left, right}, plan_.files[table_], left, planned_.lists);
  plan_.records[table_] = std::min(plan_.records[table_], static_cast<std::int64_t>(wanted));
  values.front().keys.push_back({"order", toml_text("shuffled")});
  for (const std::size_t column : {order.left, order.right}) {
    PlannedItem& item = items[column];
    item.values = std::move(values[column == order.left ? 0 : 1]);
    item.values->keys.push_back({"group", toml_text(left + " " + right)});
    item.empty_share.clear();
    item.reason = "pairs of the first " + std::to_string(count) + " records, by a condition";
  }
}

ColumnValues KeyItems::line() const {
  ColumnValues values;
  values.attributes = {attribute::number, Flag::off, line_digits, line_digits, 0};
  const std::size_t hub = keys_.keys[*keys_.hub].key->columns.front();
  values.keys = {{"type", toml_text("line")}, {"of", toml_text(schema_.columns[hub].name)}};
  return values;
}

}  // namespace korvex::host
