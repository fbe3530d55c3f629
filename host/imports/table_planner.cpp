#include "host/imports/table_planner.h"

#include <algorithm>
#include <utility>

#include "host/imports/combinations.h"
#include "host/imports/key_items.h"
#include "host/imports/key_plan.h"
#include "host/imports/ordered_columns.h"
#include "host/imports/row_list.h"
#include "host/imports/table_guesses.h"
#include "host/imports/table_layout.h"
#include "host/layout/own_text.h"
#include "host/process/signals.h"
#include "host/sources/saturating.h"

namespace korvex::host {

namespace {

using Role = ColumnRole::Kind;

// What follows a moment is to be over at the time of the import, too.
constexpr std::chrono::days room_for_followers{120};

class TablePlanner {
 public:
  TablePlanner(ImportPlan& plan, std::size_t table)
      : plan_(plan),
        table_(table),
        imported_(plan.model.tables[table]),
        schema_(imported_.schema),
        facts_(imported_.facts.columns),
        orders_(imported_.facts.orders),
        columns_(schema_.columns),
        keys_(plan_keys(
            plan.model, table, plan.records[table], summed_key(),
            [this](std::size_t i) { return fresh_values(i); },
            plan.form == DraftForm::ways && plan.make_records != nullptr)),
        items_(schema_.columns.size()) {
    if (!plan.is_plain) guesses_.emplace(imported_, keys_);
  }

  PlannedTable run() {
    find_referenced();
    settle_nulls();
    if (guesses_) {
      const std::vector<ColumnOrder> guessed = guesses_->orders();
      orders_.insert(orders_.end(), guessed.begin(), guessed.end());
    }
    for (std::size_t i = 0; i < items_.size(); ++i) make_own(i);
    add_keys(true);
    if (!keys_.rows.columns.empty()) list_rows();
    nest_joined();
    limit_records();
    if (guesses_) guesses_->finish(items_);
    if (plan_.form == DraftForm::ways) {
      follow_orders(orders_, imported_, items_);
    } else {
      for (const ColumnOrder& order : orders_) {
        note({order.left, order.right}, "compared by a condition, which their values may fail");
      }
    }
    add_keys(false);
    write_layout(plan_, table_, keys_, items_, planned_);
    return std::move(planned_);
  }

 private:
  const ForeignKey* summed_key() const {
    for (const auto& [total, source] : plan_.sums) {
      if (source.table == table_) return source.key;
    }
    return nullptr;
  }

  // A total is made of the records that belong to this one.
  bool take_sum(std::size_t i) {
    const auto sum = plan_.sums.find({table_, i});
    if (sum == plan_.sums.end()) return false;
    const SumSource& source = sum->second;
    const TableSchema& lines = plan_.model.tables[source.table].schema;
    const std::string& part = lines.columns[source.column].name;
    ColumnValues total;
    total.attributes = sum_attributes(schema_.columns[i].scale);
    total.keys = {{"type", toml_text("sum")},
                  {"layout", toml_text(plan_.files[source.table])},
                  {"key", toml_text(lines.columns[source.key->columns.front()].name)},
                  {"item", toml_text(part)}};
    items_[i].values = std::move(total);
    items_[i].empty_share.clear();
    items_[i].reason = "by its name: the sum of " + part + " in " + lines.name;
    return true;
  }

  // Others point to these columns, so they can't be empty, nor left to a trigger.
  void find_referenced() {
    for (const ImportedTable& other : plan_.model.tables) {
      for (const ForeignKey& key : other.schema.foreign_keys) {
        if (other.is_kept || plan_.model.find(key) != table_) continue;
        for (const std::string& name : key.referenced_columns) {
          for (std::size_t i = 0; i < items_.size(); ++i) {
            if (schema_.columns[i].name == name) items_[i].is_referenced = true;
          }
        }
      }
    }
  }

  void settle_nulls() {
    for (std::size_t i = 0; i < items_.size(); ++i) {
      PlannedItem& item = items_[i];
      const bool may_be_null =
          schema_.columns[i].nullable && !facts_[i].is_never_null && !item.is_referenced;
      item.is_nullable = schema_.columns[i].nullable;
      if (may_be_null && guesses_) item.empty_share = guesses_->share_of_nulls(i);
    }
    for (const auto& together : imported_.facts.together) {
      const bool has_given = std::any_of(together.begin(), together.end(), [&](std::size_t i) {
        return items_[i].empty_share.empty();
      });
      for (const std::size_t i : together) {
        items_[i].empty_share.clear();
        if (has_given) continue;
        if (i == together.front() && guesses_) items_[i].empty_share = guesses_->share_of_nulls(i);
        if (i != together.front()) items_[i].empty_with = schema_.columns[together.front()].name;
      }
    }
  }

  bool is_left_out(std::size_t i) {
    const ColumnSchema& column = schema_.columns[i];
    const auto& filled = imported_.rules.filled;
    const bool is_filled = std::count(filled.begin(), filled.end(), i) > 0 &&
                           !items_[i].is_referenced && keys_.has_own_values(i);
    if (column.is_generated) note({i}, "computed by the database, left out");
    if (is_filled) note({i}, "filled by a trigger, left out");
    return column.is_generated || is_filled;
  }

  void note(const std::vector<std::size_t>& columns, const std::string& text) {
    planned_.layout.remarks.push_back(column_names(schema_, columns) + ": " + text);
  }

  // Asked while the keys are planned: nothing else of the plan is there yet.
  std::uint64_t fresh_values(std::size_t i) const {
    ColumnRole role;
    role.is_unique = true;
    const auto values = make_values(task_of(i, role));
    return values ? values->period : 0;
  }

  ColumnTask task_of(std::size_t i, const ColumnRole& role) const {
    ColumnTask task{.column = columns_[i], .facts = facts_[i], .period = plan_.period};
    task.form = plan_.form;
    task.records = plan_.records[table_];
    task.is_unique = role.is_unique;
    task.is_fresh = (role.is_unique || role.is_fresh) && imported_.rows > 0;
    task.is_followed = std::any_of(orders_.begin(), orders_.end(),
                                   [&](const ColumnOrder& order) { return order.left == i; });
    if (task.is_followed) {
      task.period.last = std::chrono::sys_days(task.period.last) - room_for_followers;
    }
    const auto& sets = schema_.unique_sets;
    task.counts_on = task.is_unique && !sets.empty() && sets.front() == std::vector{i};
    task.has_readable_texts = !plan_.is_plain;
    task.rows_there = static_cast<std::uint64_t>(imported_.rows);
    for (const ColumnShape& shape : imported_.rules.shapes) {
      if (shape.column == i) task.shape = &shape.shape;
    }
    if (task.is_fresh) {
      if (counts_on(task.column)) {
        task.largest = plan_.database.largest_number(schema_, i);
      }
      task.largest_text = [this, i](const TextForm& form) {
        return plan_.database.largest_text(schema_, i, form);
      };
      task.held = [this, i] { return held_texts(i); };
    }
    return task;
  }

  std::vector<std::string> held_texts(std::size_t i) const {
    ForeignKey own;
    own.quoted_table = schema_.quoted_name;
    own.referenced_columns = {schema_.columns[i].name};
    own.columns = {i};
    std::vector<std::string> texts;
    plan_.database.read_keys(own, [&](const std::vector<std::string_view>& row) {
      check_interruption();
      texts.emplace_back(row.front());
    });
    return texts;
  }

  static bool counts_on(const ColumnSchema& column) {
    return column.type == ColumnType::integer16 || column.type == ColumnType::integer32 ||
           column.type == ColumnType::integer64 ||
           (column.type == ColumnType::decimal && column.precision > 0 && column.scale == 0);
  }

  void make_own(std::size_t i) {
    PlannedItem& item = items_[i];
    if (is_left_out(i)) {
      item.is_left_out = true;
      return;
    }
    if (facts_[i].is_always_null || keys_.columns[i].kind == Role::empty) {
      item.reason = facts_[i].is_always_null ? "a condition keeps it without a value"
                                             : "a key that can't be combined with another one";
      item.is_empty = true;
      return;
    }
    if (keys_.columns[i].kind == Role::row) item.values = make_values(task_of(i, {}));
    if (!keys_.has_own_values(i) || take_sum(i)) return;
    const bool is_distinct = keys_.columns[i].is_unique || keys_.columns[i].is_fresh;
    if (guesses_ && !is_distinct) {
      guesses_->narrow(i, plan_.period, columns_[i], facts_[i], item);
    }
    const ColumnTask task = task_of(i, keys_.columns[i]);
    if (guesses_ && (task.is_unique || !task.is_fresh)) {
      item.values = guesses_->text_values(i, task, item);
    }
    if (!item.values) item.values = make_values(task);
    if (!item.values) leave_without_values(i);
  }

  void leave_without_values(std::size_t i) {
    const ColumnSchema& column = schema_.columns[i];
    PlannedItem& item = items_[i];
    item.is_empty = true;
    item.reason = "no value is known for the type or its conditions";
    if (keys_.columns[i].is_unique && imported_.rows > 0) {
      item.reason = "no value is known except those that it already has";
    }
    if (column.nullable && !facts_[i].is_never_null) return;
    if (column.has_default) {
      note({i}, "left to its default");
      item.is_left_out = true;
    } else {
      item.is_gap = true;
      if (keys_.columns[i].is_unique && imported_.rows > 0) planned_.obstacle = full_table;
    }
  }

  std::uint64_t period_of(std::size_t column) const {
    const ColumnRole& role = keys_.columns[column];
    const auto& values = items_[column].values;
    if (values && values->period > 0) return values->period;
    return role.kind == Role::key ? parent_records(keys_.keys[role.key]) : sources::endless;
  }

  std::uint64_t parent_records(const KeyUse& use) const {
    const bool is_planned = use.parent < plan_.files.size() && !plan_.files[use.parent].empty();
    return is_planned ? static_cast<std::uint64_t>(plan_.records[use.parent]) : sources::endless;
  }

  void list_rows() {
    const std::vector<std::size_t>& columns = keys_.rows.columns;
    const std::size_t rows = add_row_list(plan_, table_, keys_, items_, planned_);
    std::int64_t& records = plan_.records[table_];
    if (rows == 0) planned_.obstacle = "no rows are known that fit its keys and unique columns";
    if (rows >= static_cast<std::uint64_t>(records)) return;
    records = std::max<std::int64_t>(static_cast<std::int64_t>(rows), 1);
    note(columns, "the layout has the " + std::to_string(records) + " rows that fit together");
  }

  void limit_to(std::uint64_t count, const std::vector<std::size_t>& columns) {
    std::int64_t& records = plan_.records[table_];
    if (count >= static_cast<std::uint64_t>(records)) return;
    records = std::max<std::int64_t>(static_cast<std::int64_t>(count), 1);
    note(columns, "unique, with only " + std::to_string(count) +
                      " different values: the layout has " + std::to_string(count) + " records");
  }

  void limit_records() {
    for (std::size_t i = 0; i < items_.size(); ++i) {
      const ColumnRole& role = keys_.columns[i];
      const bool is_unique_key = role.kind == Role::key && keys_.keys[role.key].is_unique;
      if (role.is_unique || is_unique_key) limit_to(period_of(i), {i});
      if (has_within(i)) {
        most_in_group_ = std::min(most_in_group_, period_of(i));
      }
    }
    limit_joined();
    if (!keys_.hub) return;
    const std::uint64_t parents = parent_records(keys_.keys[*keys_.hub]);
    const KeyUse& hub = keys_.keys[*keys_.hub];
    limit_to(sources::product(parents, most_in_group_), hub.key->columns);
  }

  bool has_within(std::size_t i) const {
    const ColumnRole& role = keys_.columns[i];
    return role.has_within || (role.kind == Role::key && keys_.keys[role.key].has_within);
  }

  // The set whose members take each combination once; empty for none.
  const std::string& joint_of(std::size_t i) const {
    const ColumnRole& role = keys_.columns[i];
    const bool is_first_of_key = role.kind == Role::key && role.place == 0;
    return is_first_of_key ? keys_.keys[role.key].joint : role.joint;
  }

  struct Joined {
    std::vector<std::size_t> columns;
    bool is_new = false;  // no row that is there has such a combination
    std::uint64_t combinations = 1;
  };

  std::map<std::string, Joined> joined_sets() const {
    std::map<std::string, Joined> sets;
    for (std::size_t i = 0; i < items_.size(); ++i) {
      const std::string& joint = joint_of(i);
      if (joint.empty() || items_[i].is_empty || items_[i].is_combined) continue;
      const ColumnRole& role = keys_.columns[i];
      Joined& set = sets[joint];
      if (role.kind == Role::key) {
        const std::vector<std::size_t>& whole = keys_.keys[role.key].key->columns;
        set.columns.insert(set.columns.end(), whole.begin(), whole.end());
      } else {
        set.columns.push_back(i);
      }
      const bool is_new_key = role.kind == Role::key && !items_[i].values;
      set.is_new = set.is_new || role.is_fresh || is_new_key || imported_.rows == 0;
      set.combinations = sources::product(set.combinations, period_of(i));
    }
    return sets;
  }

  void limit_joined() {
    for (const auto& [joint, set] : joined_sets()) limit_to(set.combinations, set.columns);
  }

  // Without ways, repeats give each combination of one set once.
  void nest_joined() {
    if (plan_.form == DraftForm::ways) return;
    std::string nested;
    int level = 0;
    for (std::size_t i = 0; i < items_.size(); ++i) {
      const std::string& joint = joint_of(i);
      const bool is_wide = keys_.columns[i].kind == Role::key &&
                           keys_.keys[keys_.columns[i].key].key->columns.size() > 1;
      if (joint.empty() || !items_[i].values) continue;
      if (nested.empty()) nested = joint;
      if (nested == joint && !is_wide) {
        items_[i].repeat_level = ++level;
      } else {
        note({i}, "unique together with others, but their values may be equal");
      }
    }
  }

  // Rows that are there have some of the combinations of lists, and the others are what is left.
  void combine(const KeyItems& keys) {
    for (const auto& [joint, set] : joined_sets()) {
      const auto free = set.is_new ? std::nullopt
                                   : combine_lists(plan_, table_, keys_, keys.lists(), set.columns,
                                                   items_, planned_);
      if (!free) continue;
      limit_to(*free, set.columns);
      if (*free == 0) planned_.obstacle = full_table;
    }
  }

  // The keys that lead to lists, or all others.
  void add_keys(bool to_lists) {
    KeyItems keys(plan_, table_, keys_, most_in_group_, planned_);
    for (std::size_t use = 0; use < keys_.keys.size(); ++use) {
      if (keys.is_list(use) == to_lists) keys.add(use, items_);
    }
    if (to_lists) {
      if (plan_.form == DraftForm::ways) combine(keys);
      return;
    }
    for (std::size_t i = 0; i < items_.size(); ++i) {
      if (keys_.columns[i].kind == Role::line) items_[i].values = keys.line();
    }
  }

  ImportPlan& plan_;
  const std::size_t table_;
  const ImportedTable& imported_;
  const TableSchema& schema_;
  std::vector<ColumnFacts> facts_;  // with the bounds of guesses
  std::vector<ColumnOrder> orders_;
  std::vector<ColumnSchema> columns_;  // with the types of guesses
  const KeyPlan keys_;
  std::optional<TableGuesses> guesses_;
  std::vector<PlannedItem> items_;
  std::uint64_t most_in_group_ = sources::endless;
  PlannedTable planned_;
};

}  // namespace

void plan_table(ImportPlan& plan, std::size_t table) {
  plan.planned[table] = TablePlanner(plan, table).run();
}

}  // namespace korvex::host
