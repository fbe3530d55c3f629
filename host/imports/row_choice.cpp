#include "host/imports/row_choice.h"

#include <algorithm>
#include <string>
#include <utility>

namespace korvex::host {

namespace {

using Columns = std::vector<std::size_t>;

// A column of a table of the model.
using Place = std::pair<std::size_t, std::size_t>;

std::size_t column_named(const TableSchema& table, const std::string& name) {
  const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                  [&](const ColumnSchema& each) { return each.name == name; });
  return static_cast<std::size_t>(found - table.columns.begin());
}

template <typename T>
bool contains(const std::vector<T>& all, const T& one) {
  return std::count(all.begin(), all.end(), one) > 0;
}

// The columns that a key makes of some of its own; empty where one is none of them.
Columns columns_behind(const DatabaseModel& model, const ForeignKey& key, const Columns& own) {
  Columns referenced;
  const TableSchema& parent = model.tables[model.find(key)].schema;
  for (const std::size_t column : own) {
    const auto place = std::find(key.columns.begin(), key.columns.end(), column);
    if (place == key.columns.end()) return {};
    const auto i = static_cast<std::size_t>(place - key.columns.begin());
    referenced.push_back(column_named(parent, key.referenced_columns[i]));
  }
  return referenced;
}

// Whether columns of a table lead to those that a key refers to, by the table's own keys.
bool leads_to(const DatabaseModel& model, std::size_t table, const Columns& columns,
              const ForeignKey& target, std::size_t steps = 0) {
  if (steps > model.tables.size()) return false;
  const std::vector<ForeignKey>& keys = model.tables[table].schema.foreign_keys;
  return std::any_of(keys.begin(), keys.end(), [&](const ForeignKey& key) {
    const std::size_t parent = model.find(key);
    if (parent == model.tables.size() || key.is_to_own_table) return false;
    const Columns behind = columns_behind(model, key, columns);
    if (behind.empty()) return false;
    const bool is_there =
        parent == model.find(target) && behind == columns_behind(model, target, target.columns);
    return is_there || leads_to(model, parent, behind, target, steps + 1);
  });
}

class RowChooser {
 public:
  RowChooser(const DatabaseModel& model, std::size_t table, const std::set<std::size_t>& wanted)
      : model_(model),
        place_(table),
        table_(model.tables[table].schema),
        facts_(model.tables[table].facts) {
    choice_.columns = wanted;
  }

  RowChoice choose() {
    leave_circles();
    find_rows();
    return std::move(choice_);
  }

 private:
  bool is_nullable(std::size_t column) const {
    return table_.columns[column].nullable && !facts_.columns[column].is_never_null;
  }

  void put_in_rows(const Columns& columns) {
    choice_.columns.insert(columns.begin(), columns.end());
  }

  bool touches_rows(const Columns& columns) const {
    return std::any_of(columns.begin(), columns.end(),
                       [&](std::size_t column) { return choice_.columns.contains(column); });
  }

  // Whether the values of a column come, over keys, from those of another one.
  bool comes_from(Place from, Place target, std::set<Place>& seen) const {
    if (from == target) return true;
    if (!seen.insert(from).second || model_.tables[from.first].is_kept) return false;
    for (const ForeignKey& key : model_.tables[from.first].schema.foreign_keys) {
      const std::size_t parent = model_.find(key);
      if (parent == model_.tables.size() || !contains(key.columns, from.second)) continue;
      const std::size_t column = columns_behind(model_, key, {from.second}).front();
      if (comes_from({parent, column}, target, seen)) return true;
    }
    return false;
  }

  // A key of which a column leads back to itself has no values to begin with, but it may be NULL.
  void leave_circles() {
    for (const ForeignKey& key : table_.foreign_keys) {
      if (key.columns.size() == 1 || key.is_to_own_table) continue;
      const std::size_t parent = model_.find(key);
      const auto free = std::find_if(key.columns.begin(), key.columns.end(),
                                     [&](std::size_t column) { return is_nullable(column); });
      if (parent == model_.tables.size() || free == key.columns.end()) continue;
      const bool is_circle =
          std::any_of(key.columns.begin(), key.columns.end(), [&](std::size_t column) {
            std::set<Place> seen;
            const std::size_t behind = columns_behind(model_, key, {column}).front();
            return comes_from({parent, behind}, {place_, column}, seen);
          });
      if (!is_circle) continue;
      choice_.empty.push_back(*free);
      choice_.left.insert(&key);
    }
  }

  // The keys that can be in a list of rows.
  std::vector<const ForeignKey*> listable_keys() const {
    std::vector<const ForeignKey*> keys;
    for (const ForeignKey& key : table_.foreign_keys) {
      const bool has_values =
          model_.find(key) < model_.tables.size() && !choice_.left.contains(&key) &&
          std::none_of(key.columns.begin(), key.columns.end(), [&](std::size_t column) {
            return table_.columns[column].is_generated || facts_.columns[column].is_always_null;
          });
      if (has_values) keys.push_back(&key);
    }
    return keys;
  }

  // Whether a key to which all rows lead has another one in it, as the records behind it have it.
  bool covers(const ForeignKey& wide, const ForeignKey& narrow) const {
    if (wide.is_to_own_table) return false;
    const bool is_needed = std::none_of(wide.columns.begin(), wide.columns.end(),
                                        [&](std::size_t column) { return is_nullable(column); });
    const Columns behind = columns_behind(model_, wide, narrow.columns);
    return is_needed && !behind.empty() && leads_to(model_, model_.find(wide), behind, narrow);
  }

  bool are_apart(const ForeignKey& a, const ForeignKey& b) const {
    const bool share = std::any_of(a.columns.begin(), a.columns.end(),
                                   [&](std::size_t column) { return contains(b.columns, column); });
    return share && !covers(a, b) && !covers(b, a);
  }

  void find_rows() {
    const std::vector<const ForeignKey*> keys = listable_keys();
    for (const ForeignKey* key : keys) {
      const bool is_apart = std::any_of(keys.begin(), keys.end(), [&](const ForeignKey* other) {
        return other != key && are_apart(*key, *other);
      });
      const bool is_narrowed =
          key->columns.size() > 1 &&
          std::any_of(key->columns.begin(), key->columns.end(), [&](std::size_t column) {
            return facts_.columns[column].choices || facts_.columns[column].most;
          });
      if (is_apart || is_narrowed) put_in_rows(key->columns);
    }
    const auto is_in_key = [&](std::size_t column) {
      return std::any_of(keys.begin(), keys.end(), [&](const ForeignKey* key) {
        return contains(key->columns, column) && !key->is_to_own_table;
      });
    };
    for (const ColumnOrder& order : facts_.orders) {
      if (is_in_key(order.left) && is_in_key(order.right)) put_in_rows({order.left, order.right});
    }
    // Whatever shares a column with the rows belongs to them.
    for (bool has_grown = true; has_grown;) {
      has_grown = false;
      for (const ForeignKey* key : keys) {
        if (contains(choice_.keys, key) || !touches_rows(key->columns)) continue;
        const bool is_covered = std::any_of(keys.begin(), keys.end(), [&](const ForeignKey* other) {
          return other != key && touches_rows(other->columns) && covers(*other, *key) &&
                 !(covers(*key, *other) && other > key);
        });
        if (is_covered) continue;
        choice_.keys.push_back(key);
        put_in_rows(key->columns);
        has_grown = true;
        for (const std::string& name : key->referenced_columns) {
          const std::size_t column = column_named(table_, name);
          const bool counts = column < table_.columns.size() &&
                              is_free_whole_number(table_.columns[column], facts_.columns[column]);
          if (key->is_to_own_table && counts) put_in_rows({column});
        }
      }
    }
  }

  const DatabaseModel& model_;
  const std::size_t place_;
  const TableSchema& table_;
  const TableFacts& facts_;
  RowChoice choice_;
};

}  // namespace

RowChoice choose_rows(const DatabaseModel& model, std::size_t table,
                      const std::set<std::size_t>& wanted) {
  return RowChooser(model, table, wanted).choose();
}

}  // namespace korvex::host
