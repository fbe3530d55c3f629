#include "host/imports/key_items.h"

#include <algorithm>
#include <set>
#include <utility>

#include "host/imports/lists.h"
#include "host/process/signals.h"
#include "host/sources/saturating.h"

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
  if (!taken.empty() && items[use.key->columns.front()].is_gap) planned_.obstacle = full_table;
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

ColumnValues KeyItems::line() const {
  ColumnValues values;
  values.attributes = {attribute::number, Flag::off, line_digits, line_digits, 0};
  const std::size_t hub = keys_.keys[*keys_.hub].key->columns.front();
  values.keys = {{"type", toml_text("line")}, {"of", toml_text(schema_.columns[hub].name)}};
  return values;
}

}  // namespace korvex::host
