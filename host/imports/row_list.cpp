#include "host/imports/row_list.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "host/imports/combinations.h"
#include "host/imports/condition_parts.h"
#include "host/imports/lists.h"
#include "host/imports/planned_records.h"
#include "host/process/signals.h"
#include "host/ways/mixing.h"

namespace korvex::host {

namespace {

using Texts = std::vector<std::string>;

// A list is read whole by whoever uses it.
constexpr std::size_t most_rows = 100'000;
// Where unique sets or other keys leave few rows, most draws hit none of them.
constexpr std::size_t draws_for_each = 40;
constexpr std::size_t fewest_draws = 4'000;
constexpr std::uint64_t one_in_without_key = 10;

bool is_whole(ColumnType type) {
  return type == ColumnType::integer16 || type == ColumnType::integer32 ||
         type == ColumnType::integer64;
}

// A number in one form, whatever layout or table it comes from.
std::string plain_text(std::string text, const ColumnSchema& column) {
  if (!is_whole(column.type)) return text;
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  const std::size_t digit = text.find_first_not_of('0', sign);
  if (digit != std::string::npos) text.erase(sign, digit - sign);
  return digit == std::string::npos ? "0" : text;
}

class RowMaker {
 public:
  RowMaker(ImportPlan& plan, std::size_t table, const KeyPlan& keys,
           const std::vector<PlannedItem>& items)
      : plan_(plan),
        table_(table),
        imported_(plan.model.tables[table]),
        schema_(imported_.schema),
        keys_(keys),
        columns_(keys.rows.columns),
        items_(items),
        places_(schema_.columns.size(), columns_.size()) {
    for (std::size_t place = 0; place < columns_.size(); ++place) {
      places_[columns_[place]] = place;
    }
  }

  TextRows make() {
    if (!read_parents()) return {};
    make_pools();
    find_sets();
    const auto records = static_cast<std::size_t>(plan_.records[table_]);
    const std::size_t wanted = std::min(records, most_rows);
    const std::size_t most_draws = wanted * draws_for_each + fewest_draws;
    for (; rows_.size() < wanted && draw_ < most_draws; ++draw_) {
      check_interruption();
      add_row();
    }
    return std::move(rows_);
  }

 private:
  // A key with the rows that it can lead to, by the columns that other keys have settled.
  struct Parent {
    const ForeignKey* key = nullptr;
    bool is_optional = false;
    bool is_own = false;  // the rows of this very list
    TextRows rows;
    std::vector<std::size_t> settled;  // places in the key
    std::vector<std::size_t> open;
    std::map<Texts, std::vector<std::size_t>> index;
  };

  struct UniqueSet {
    std::vector<std::size_t> columns;
    std::set<Texts> taken;
  };

  bool is_taken(const UniqueSet* set, const Texts& row) const {
    const auto texts = set == nullptr ? std::nullopt : texts_of(set->columns, row);
    return texts && set->taken.contains(*texts);
  }

  bool is_in_rows(std::size_t column) const { return places_[column] < columns_.size(); }

  std::uint64_t draw(std::uint64_t use, std::uint64_t below) const {
    const std::uint64_t row = draw_ + static_cast<std::uint64_t>(imported_.rows);
    return ways::absorb(ways::absorb(row, use), below) % below;
  }

  bool may_be_null(std::size_t column) const {
    return schema_.columns[column].nullable && !imported_.facts.columns[column].is_never_null;
  }

  // Of new records, or else of the rows that are there.
  TextRows parent_rows(const ForeignKey& key) {
    const std::size_t parent = plan_.model.find(key);
    TextRows rows;
    const auto take = [&](Texts row) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        const std::size_t column = key.columns[i];
        row[i] = plain_text(std::move(row[i]), schema_.columns[column]);
        if (!list_line(row[i], false)) return;
        if (!allows(imported_.facts.columns[column], row[i])) return;
      }
      if (rows.size() < most_rows) rows.push_back(std::move(row));
    };
    if (plan_.planned.contains(parent)) {
      for (const Texts& row : planned_rows(plan_, parent, key.referenced_columns, most_rows)) {
        take(row);
      }
    }
    if (!rows.empty()) return rows;
    plan_.database.read_keys(key, [&](const std::vector<std::string_view>& texts) {
      check_interruption();
      take({texts.begin(), texts.end()});
    });
    return rows;
  }

  // False where rows must follow a key that leads nowhere.
  bool read_parents() {
    std::set<std::size_t> settled;
    std::vector<const ForeignKey*> left = keys_.rows.keys;
    while (!left.empty()) {
      const auto next = std::max_element(left.begin(), left.end(), [&](auto* a, auto* b) {
        return rank_of(*a, settled) < rank_of(*b, settled);
      });
      Parent parent;
      parent.key = *next;
      parent.is_own = parent.key->is_to_own_table;
      left.erase(next);
      for (std::size_t i = 0; i < parent.key->columns.size(); ++i) {
        const std::size_t column = parent.key->columns[i];
        (settled.contains(column) ? parent.settled : parent.open).push_back(i);
      }
      parent.is_optional = std::any_of(parent.open.begin(), parent.open.end(), [&](std::size_t i) {
        return may_be_null(parent.key->columns[i]);
      });
      if (!parent.is_own) {
        parent.rows = parent_rows(*parent.key);
        for (std::size_t i = 0; i < parent.rows.size(); ++i) {
          parent.index[part_of(parent.rows[i], parent.settled)].push_back(i);
        }
        if (parent.rows.empty() && !parent.is_optional) return false;
      }
      settled.insert(parent.key->columns.begin(), parent.key->columns.end());
      parents_.push_back(std::move(parent));
    }
    return true;
  }

  // Keys that all rows follow come first, then those of which most is settled, then wide ones.
  std::tuple<bool, bool, std::size_t, std::size_t> rank_of(
      const ForeignKey& key, const std::set<std::size_t>& settled) const {
    const bool is_needed = std::none_of(key.columns.begin(), key.columns.end(),
                                        [&](std::size_t column) { return may_be_null(column); });
    const auto known = std::count_if(key.columns.begin(), key.columns.end(),
                                     [&](std::size_t column) { return settled.contains(column); });
    return {!key.is_to_own_table, is_needed, static_cast<std::size_t>(known), key.columns.size()};
  }

  static Texts part_of(const Texts& row, const std::vector<std::size_t>& places) {
    Texts part;
    for (const std::size_t place : places) part.push_back(row[place]);
    return part;
  }

  // What the columns that are in no key can be; none for those that count.
  void make_pools() {
    pools_.resize(columns_.size());
    for (std::size_t place = 0; place < columns_.size(); ++place) {
      const std::size_t column = columns_[place];
      const bool is_in_key =
          std::any_of(keys_.rows.keys.begin(), keys_.rows.keys.end(), [&](const ForeignKey* key) {
            return std::count(key->columns.begin(), key->columns.end(), column) > 0;
          });
      if (is_in_key) continue;
      const ColumnFacts& facts = imported_.facts.columns[column];
      const bool counts = is_whole(schema_.columns[column].type) && !facts.choices && !facts.most;
      if (counts) counted_.push_back(place);
      if (!counts && items_[column].values) pools_[place] = values_in(*items_[column].values);
    }
  }

  void find_sets() {
    for (const auto& set : imported_.facts.unique_sets) {
      if (!std::all_of(set.begin(), set.end(), [&](std::size_t i) { return is_in_rows(i); })) {
        continue;
      }
      sets_.push_back({set, {}});
      if (imported_.rows == 0) continue;
      for (Texts row : held_rows(plan_.database, schema_, set)) {
        for (std::size_t i = 0; i < set.size(); ++i) {
          row[i] = plain_text(std::move(row[i]), schema_.columns[set[i]]);
        }
        sets_.back().taken.insert(std::move(row));
      }
    }
  }

  void add_row() {
    Texts row(columns_.size());
    for (std::size_t i = 0; i < parents_.size(); ++i) {
      if (!follow(parents_[i], i, row)) return;
    }
    for (std::size_t place = 0; place < columns_.size(); ++place) {
      const Texts& pool = pools_[place];
      if (!pool.empty()) row[place] = pool[draw(1000 + place, pool.size())];
    }
    for (const std::size_t place : counted_) {
      if (!count(place, row)) return;
    }
    if (!meets_orders(row)) return;
    for (const UniqueSet& set : sets_) {
      if (is_taken(&set, row)) return;
    }
    for (UniqueSet& set : sets_) {
      if (auto texts = texts_of(set.columns, row)) set.taken.insert(std::move(*texts));
    }
    for (Parent& parent : parents_) {
      if (parent.is_own) remember(parent, row);
    }
    rows_.push_back(std::move(row));
  }

  bool follow(const Parent& parent, std::size_t number, Texts& row) {
    Texts settled;
    for (const std::size_t i : parent.settled)
      settled.push_back(row[places_[parent.key->columns[i]]]);
    const auto found = parent.index.find(settled);
    const bool is_left_out = parent.is_optional && draw(2 * number, one_in_without_key) == 0;
    if (is_left_out || found == parent.index.end()) return parent.is_optional;
    const auto& choices = found->second;
    const Texts& chosen = parent.rows[choices[draw(2 * number + 1, choices.size())]];
    for (const std::size_t i : parent.open) row[places_[parent.key->columns[i]]] = chosen[i];
    return true;
  }

  // The next number beside the other columns of a unique set, or of all.
  bool count(std::size_t place, Texts& row) {
    const std::size_t column = columns_[place];
    const ColumnFacts& facts = imported_.facts.columns[column];
    UniqueSet* const set = set_with(column);
    Texts group;
    for (const std::size_t other : set == nullptr ? std::vector<std::size_t>{} : set->columns) {
      if (other != column) group.push_back(row[places_[other]]);
    }
    const bool has_least = facts.least && facts.least->text;
    std::int64_t& next = next_
                             .try_emplace({place, std::move(group)},
                                          has_least ? std::atoll(facts.least->text->c_str()) : 1)
                             .first->second;
    do {
      row[place] = std::to_string(next++);
    } while (is_taken(set, row));
    return allows(facts, row[place]);
  }

  UniqueSet* set_with(std::size_t column) {
    const auto found = std::find_if(sets_.begin(), sets_.end(), [&](const UniqueSet& set) {
      return std::count(set.columns.begin(), set.columns.end(), column) > 0;
    });
    return found == sets_.end() ? nullptr : &*found;
  }

  // Nothing where one of them is NULL.
  std::optional<Texts> texts_of(const std::vector<std::size_t>& columns, const Texts& row) const {
    Texts texts;
    for (const std::size_t column : columns) {
      texts.push_back(row[places_[column]]);
      if (texts.back().empty()) return std::nullopt;
    }
    return texts;
  }

  bool meets_orders(const Texts& row) const {
    using Kind = ColumnOrder::Kind;
    for (const ColumnOrder& order : imported_.facts.orders) {
      if (!is_in_rows(order.left) || !is_in_rows(order.right)) continue;
      const std::string& left = row[places_[order.left]];
      const std::string& right = row[places_[order.right]];
      if (left.empty() || right.empty()) continue;
      const bool is_number = is_whole(schema_.columns[order.left].type);
      const bool is_less = is_number ? is_below(left, right) : left < right;
      const bool is_met = order.kind == Kind::less            ? is_less
                          : order.kind == Kind::less_or_equal ? is_less || left == right
                          : order.kind == Kind::equal         ? left == right
                                                              : left != right;
      if (!is_met) return false;
    }
    return true;
  }

  // A row of the list, which later ones may refer to.
  void remember(Parent& parent, const Texts& row) {
    Texts referenced;
    for (const std::string& name : parent.key->referenced_columns) {
      const auto column = std::find_if(schema_.columns.begin(), schema_.columns.end(),
                                       [&](const ColumnSchema& each) { return each.name == name; });
      const auto place = static_cast<std::size_t>(column - schema_.columns.begin());
      if (place >= places_.size() || !is_in_rows(place)) return;
      referenced.push_back(row[places_[place]]);
    }
    parent.index[part_of(referenced, parent.settled)].push_back(parent.rows.size());
    parent.rows.push_back(std::move(referenced));
  }

  ImportPlan& plan_;
  const std::size_t table_;
  const ImportedTable& imported_;
  const TableSchema& schema_;
  const KeyPlan& keys_;
  const std::vector<std::size_t>& columns_;
  const std::vector<PlannedItem>& items_;
  std::vector<std::size_t> places_;  // of the table's columns in a row
  std::vector<Parent> parents_;
  std::vector<Texts> pools_;          // side by side with the row's columns
  std::vector<std::size_t> counted_;  // places in a row
  std::vector<UniqueSet> sets_;
  std::map<std::pair<std::size_t, Texts>, std::int64_t> next_;
  std::size_t draw_ = 0;
  TextRows rows_;
};

std::string tables_of(const std::vector<const ForeignKey*>& keys) {
  std::string names;
  for (const ForeignKey* key : keys) {
    const std::string end = names.empty() ? "" : key == keys.back() ? " and " : ", ";
    names += end + key->table;
  }
  return names;
}

}  // namespace

std::size_t add_row_list(ImportPlan& plan, std::size_t table, const KeyPlan& keys,
                         std::vector<PlannedItem>& items, PlannedTable& planned) {
  const TableSchema& schema = plan.model.tables[table].schema;
  const TextRows rows = RowMaker(plan, table, keys, items).make();
  std::vector<std::string> names;
  for (const std::size_t column : keys.rows.columns) names.push_back(schema.columns[column].name);
  std::vector<ColumnValues> values =
      table_values(rows, names, plan.files[table], names.front(), planned.lists);
  for (std::size_t i = 0; i < names.size(); ++i) {
    PlannedItem& item = items[keys.rows.columns[i]];
    if (names.size() > 1) values[i].keys.push_back({"group", toml_text(names.front())});
    values[i].period = rows.size();
    item.values = std::move(values[i]);
    item.empty_share.clear();
    item.empty_with.clear();
    item.reason = "rows that fit together, of the planned records of " + tables_of(keys.rows.keys);
  }
  return rows.size();
}

}  // namespace korvex::host
