#include "host/imports/key_plan.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <utility>

#include "host/imports/row_choice.h"

namespace korvex::host {

namespace {

using Role = ColumnRole::Kind;
using Columns = std::vector<std::size_t>;

class KeyPlanner {
 public:
  KeyPlanner(const DatabaseModel& model, std::size_t table, std::int64_t records,
             const ForeignKey* summed, const FreshValues& fresh_values, bool has_lists)
      : model_(model),
        place_(table),
        table_(model.tables[table].schema),
        facts_(model.tables[table].facts),
        has_rows_(model.tables[table].rows > 0),
        records_(static_cast<std::uint64_t>(records)),
        summed_(summed),
        fresh_values_(fresh_values),
        has_lists_(has_lists) {
    plan_.columns.resize(table_.columns.size());
  }

  // Columns that are to be in the list of rows, whatever else says so.
  void put_in_rows(const std::set<std::size_t>& columns) { in_rows_ = columns; }

  // The unique sets that the plan can't keep.
  const std::vector<Columns>& unsettled() const { return unsettled_; }

  KeyPlan plan() {
    take_rows();
    take_keys();
    for (const Columns& set : facts_.unique_sets) make_unique_alone(set);
    for (const Columns& set : facts_.unique_sets) make_unique_in_rows(set);
    choose_hub();
    for (const Columns& set : facts_.unique_sets) make_unique_together(set);
    add_row_columns();
    return std::move(plan_);
  }

 private:
  bool touches_rows(const Columns& columns) const {
    return std::any_of(columns.begin(), columns.end(),
                       [&](std::size_t column) { return in_rows_.contains(column); });
  }

  void take_rows() {
    if (!has_lists_) return;
    RowChoice choice = choose_rows(model_, place_, in_rows_);
    plan_.rows.keys = std::move(choice.keys);
    in_rows_ = std::move(choice.columns);
    left_ = std::move(choice.left);
    for (const std::size_t column : in_rows_) plan_.columns[column].kind = Role::row;
    for (const std::size_t column : choice.empty) plan_.columns[column].kind = Role::empty;
  }

  void add_row_columns() {
    for (std::size_t i = 0; i < plan_.columns.size(); ++i) {
      if (plan_.columns[i].kind == Role::row) plan_.rows.columns.push_back(i);
    }
  }

  // A set of which the rows have a part: they have the rest as well, or one of it differs anyway.
  void make_unique_in_rows(const Columns& set) {
    Columns rest;
    std::copy_if(set.begin(), set.end(), std::back_inserter(rest),
                 [&](std::size_t column) { return plan_.columns[column].kind != Role::row; });
    if (rest.empty() || rest.size() == set.size() || is_settled(members_of(rest))) return;
    const auto is_own = [&](std::size_t column) { return plan_.has_own_values(column); };
    for (const std::size_t column : rest) {
      if (!is_own(column) || !is_whole_number(column)) continue;
      plan_.columns[column].kind = Role::row;
      return;
    }
    for (const std::size_t column : rest) {
      if (!is_own(column) || !is_rich(column)) continue;
      plan_.columns[column].is_unique = true;
      return;
    }
    if (std::all_of(rest.begin(), rest.end(), is_own)) {
      for (const std::size_t column : rest) plan_.columns[column].kind = Role::row;
    } else {
      unsettled_.push_back(set);
    }
  }

  // Wide keys first: the columns of a narrower one are often among theirs, and then follow it, too.
  void take_keys() {
    std::vector<std::size_t> order(table_.foreign_keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      return table_.foreign_keys[a].columns.size() > table_.foreign_keys[b].columns.size();
    });
    for (const std::size_t i : order) {
      const ForeignKey& key = table_.foreign_keys[i];
      if (!left_.contains(&key) && !touches_rows(key.columns)) take_key(key);
    }
  }

  bool is_nullable(std::size_t column) const {
    return table_.columns[column].nullable && !facts_.columns[column].is_never_null;
  }

  void take_key(const ForeignKey& key) {
    // A condition names the keys of rows that are yet to come: they count from 1, as all new keys
    // do.
    const std::size_t table = model_.find(key);
    const bool is_named = key.columns.size() == 1 && facts_.columns[key.columns.front()].choices;
    if (is_named && table < model_.tables.size() && model_.tables[table].rows == 0) return;
    const auto is_free = [&](std::size_t column) {
      return plan_.columns[column].kind == Role::own && !table_.columns[column].is_generated;
    };
    const auto taken = std::count_if(key.columns.begin(), key.columns.end(),
                                     [&](std::size_t column) { return !is_free(column); });
    const bool is_wide = key.columns.size() > 1;
    const bool must_have_all =
        std::none_of(key.columns.begin(), key.columns.end(),
                     [&](std::size_t column) { return is_nullable(column); });
    // The first record of a table into itself has no parent, and an address in parts no row.
    const bool is_rootless = key.is_to_own_table && is_wide && !must_have_all;
    if (taken == 0 && !is_rootless) {
      const std::size_t parent = model_.find(key);
      plan_.keys.push_back({.key = &key, .parent = parent, .takes_rows = takes_rows(key, parent)});
      for (std::size_t place = 0; place < key.columns.size(); ++place) {
        ColumnRole& role = plan_.columns[key.columns[place]];
        role.kind = Role::key;
        role.key = plan_.keys.size() - 1;
        role.place = place;
      }
      return;
    }
    for (const std::size_t column : key.columns) {
      if (!is_free(column) || !is_nullable(column)) continue;
      plan_.columns[column].kind = Role::empty;
      return;
    }
    if (static_cast<std::size_t>(taken) == key.columns.size() && !is_wide) return;
    plan_.remarks.push_back(column_names(table_, key.columns) + ": the key to " + key.table +
                            " shares columns with another key, and may refer to missing rows");
  }

  // Of a table that is not filled, and where a condition names the rows: new ones are others.
  bool takes_rows(const ForeignKey& key, std::size_t parent) const {
    if (parent >= model_.tables.size() || model_.tables[parent].is_kept) return true;
    const bool has_condition =
        std::any_of(key.columns.begin(), key.columns.end(), [&](std::size_t column) {
          const ColumnFacts& facts = facts_.columns[column];
          return facts.choices.has_value() || facts.is_bounded();
        });
    return has_condition && model_.tables[parent].rows > 0;
  }

  // The keys and the columns of its own that a set is made of.
  struct Members {
    std::vector<std::size_t> keys;
    Columns own;
    bool has_part = false;  // of a key
    bool has_empty = false;
  };

  Members members_of(const Columns& set) const {
    Members members;
    for (const std::size_t column : set) {
      const ColumnRole& role = plan_.columns[column];
      if (role.kind == Role::key) {
        // Rows of a key's parent may be alike in a part of its columns.
        const Columns& whole = plan_.keys[role.key].key->columns;
        const bool is_whole = std::all_of(whole.begin(), whole.end(), [&](std::size_t member) {
          return std::count(set.begin(), set.end(), member) > 0;
        });
        if (!is_whole) {
          members.has_part = true;
        } else if (std::count(members.keys.begin(), members.keys.end(), role.key) == 0) {
          members.keys.push_back(role.key);
        }
      } else if (role.kind == Role::row) {
        members.has_part = true;
      } else if (role.kind == Role::empty || facts_.columns[column].is_always_null) {
        members.has_empty = true;
      } else {
        members.own.push_back(column);
      }
    }
    return members;
  }

  bool is_settled(const Members& members) const {
    return members.has_empty ||
           std::any_of(members.keys.begin(), members.keys.end(),
                       [&](std::size_t key) { return plan_.keys[key].is_unique; }) ||
           std::any_of(members.own.begin(), members.own.end(), [&](std::size_t column) {
             return plan_.columns[column].is_unique || table_.columns[column].is_generated;
           });
  }

  // A set of one column or one key, or one with a column that has values for any number of rows.
  void make_unique_alone(const Columns& set) {
    const Members members = members_of(set);
    if (members.has_empty || members.has_part) return;
    if (members.own.empty() && members.keys.size() == 1) {
      plan_.keys[members.keys.front()].is_unique = true;
    } else if (members.keys.empty() && members.own.size() == 1) {
      plan_.columns[members.own.front()].is_unique = true;
    }
  }

  // The key that is in most sets of several keys or columns: the other members follow its groups.
  void choose_hub() {
    std::map<std::size_t, int> sets;
    for (const Columns& set : facts_.unique_sets) {
      const Members members = members_of(set);
      if (touches_rows(set) || is_settled(members) || members.keys.size() + members.own.size() < 2)
        continue;
      for (const std::size_t key : members.keys) {
        if (!plan_.keys[key].takes_rows && !plan_.keys[key].key->is_to_own_table) ++sets[key];
      }
    }
    for (std::size_t key = 0; key < plan_.keys.size(); ++key) {
      const bool is_free = !plan_.keys[key].is_unique && (sets.empty() || sets.contains(key));
      if (summed_ != nullptr && plan_.keys[key].key == summed_ && is_free) sets = {{key, 1}};
    }
    int most = 0;
    for (const auto& [key, count] : sets) {
      if (count <= most) continue;
      most = count;
      plan_.hub = key;
    }
    if (plan_.hub) plan_.keys[*plan_.hub].has_each = true;
  }

  bool is_whole_number(std::size_t column) const {
    return is_free_whole_number(table_.columns[column], facts_.columns[column]);
  }

  // Whether a column's values may all be different without looking odd, and are enough.
  bool is_rich(std::size_t column) const {
    const ColumnFacts& facts = facts_.columns[column];
    if (facts.choices || facts.is_bounded() || facts.most_length) return false;
    switch (table_.columns[column].type) {
      case ColumnType::integer32:
      case ColumnType::integer64:
      case ColumnType::uuid:
      case ColumnType::timestamp:
      case ColumnType::text:
      case ColumnType::binary:
        return has_enough(column);
      default:
        return false;
    }
  }

  bool has_enough(std::size_t column) const { return fresh_values_(column) >= records_; }

  void make_unique_together(const Columns& set) {
    const Members members = members_of(set);
    const bool has_rows = std::any_of(set.begin(), set.end(), [&](std::size_t column) {
      return plan_.columns[column].kind == Role::row;
    });
    if (set.size() < 2 || has_rows || is_settled(members)) return;
    const bool has_hub =
        plan_.hub && std::count(members.keys.begin(), members.keys.end(), *plan_.hub) > 0;
    if (has_hub && follow_hub(members)) return;
    for (const bool must_be_text : {true, false}) {
      for (const std::size_t column : members.own) {
        if (!is_rich(column)) continue;
        if (must_be_text && table_.columns[column].type != ColumnType::text) continue;
        plan_.columns[column].is_unique = true;
        return;
      }
    }
    if (join(set, members)) return;
    const auto enough = std::find_if(members.own.begin(), members.own.end(),
                                     [&](std::size_t column) { return has_enough(column); });
    if (enough != members.own.end()) {
      plan_.columns[*enough].is_unique = true;
      return;
    }
    unsettled_.push_back(set);
    plan_.remarks.push_back(column_names(table_, set) +
                            ": unique together, but their values may be equal");
  }

  // One member that differs in each group of the hub is enough; one that does so already is best.
  bool follow_hub(const Members& members) {
    for (const std::size_t column : members.own) {
      const ColumnRole& role = plan_.columns[column];
      if (role.has_within || role.kind == Role::line) return true;
    }
    for (const std::size_t key : members.keys) {
      if (key != *plan_.hub && plan_.keys[key].has_within) return true;
    }
    for (const std::size_t column : members.own) {
      if (!is_whole_number(column)) continue;
      plan_.columns[column].kind = Role::line;
      return true;
    }
    for (const std::size_t key : members.keys) {
      if (key == *plan_.hub) continue;
      plan_.keys[key].has_within = true;
      return true;
    }
    for (const std::size_t column : members.own) {
      if (is_rich(column) && table_.columns[column].type == ColumnType::text) {
        plan_.columns[column].is_unique = true;
      } else {
        plan_.columns[column].has_within = true;
      }
      return true;
    }
    return false;
  }

  bool join(const Columns& set, const Members& members) {
    const auto is_joined = [&](std::size_t key) {
      return plan_.keys[key].has_each || plan_.keys[key].has_within ||
             !plan_.keys[key].joint.empty() || plan_.keys[key].key->is_to_own_table;
    };
    if (std::any_of(members.keys.begin(), members.keys.end(), is_joined)) return false;
    for (const std::size_t column : members.own) {
      const ColumnRole& role = plan_.columns[column];
      if (role.has_within || !role.joint.empty()) return false;
    }
    std::string name;
    for (const std::size_t column : set) {
      name += (name.empty() ? "" : " ") + table_.columns[column].name;
    }
    for (const std::size_t key : members.keys) plan_.keys[key].joint = name;
    for (const std::size_t column : members.own) plan_.columns[column].joint = name;
    if (has_rows_) renew(members);
    return true;
  }

  // One member with nothing but new values keeps the combinations apart from those of the rows that
  // are there, as the keys of new records do.
  void renew(const Members& members) {
    const bool has_new_key =
        std::any_of(members.keys.begin(), members.keys.end(),
                    [&](std::size_t key) { return !plan_.keys[key].takes_rows; });
    if (has_new_key) return;
    std::optional<std::size_t> richest;
    std::uint64_t most = 0;
    for (const std::size_t column : members.own) {
      const std::uint64_t values = fresh_values_(column);
      if (values <= most) continue;
      most = values;
      richest = column;
    }
    if (richest) plan_.columns[*richest].is_fresh = true;
  }

  const DatabaseModel& model_;
  const std::size_t place_;
  const TableSchema& table_;
  const TableFacts& facts_;
  const bool has_rows_;
  const std::uint64_t records_;
  const ForeignKey* const summed_;
  const FreshValues& fresh_values_;
  const bool has_lists_;
  std::set<const ForeignKey*> left_;  // without a value
  std::set<std::size_t> in_rows_;
  std::vector<Columns> unsettled_;
  KeyPlan plan_;
};

}  // namespace

std::string column_names(const TableSchema& table, const std::vector<std::size_t>& columns) {
  std::string names = columns.size() == 1 ? "column " : "columns ";
  for (const std::size_t column : columns) {
    names += (column == columns.front() ? "" : ", ") + table.columns[column].name;
  }
  return names;
}

KeyPlan plan_keys(const DatabaseModel& model, std::size_t table, std::int64_t records,
                  const ForeignKey* summed, const FreshValues& fresh_values, bool has_lists) {
  // What no way can keep unique goes into the rows, and the rest is planned anew.
  std::set<std::size_t> in_rows;
  for (;;) {
    KeyPlanner planner(model, table, records, summed, fresh_values, has_lists);
    planner.put_in_rows(in_rows);
    KeyPlan plan = planner.plan();
    const std::size_t before = in_rows.size();
    for (const Columns& set : planner.unsettled()) in_rows.insert(set.begin(), set.end());
    if (!has_lists || in_rows.size() == before) return plan;
  }
}

}  // namespace korvex::host
