#include "host/imports/record_counts.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace korvex::host {

namespace {

constexpr std::int64_t lookup_records = 12;
constexpr std::int64_t parent_records = 200;
constexpr std::int64_t most_default_records = 5'000;
constexpr std::int64_t children = 3;
constexpr std::size_t most_lookup_columns = 4;
constexpr std::int64_t most_records = 2'000'000'000;

class Counter {
 public:
  explicit Counter(const DatabaseModel& model) : model_(model), states_(model.tables.size()) {
    for (const ImportedTable& table : model.tables) {
      for (const ForeignKey& key : table.schema.foreign_keys) {
        if (!key.is_to_own_table) referenced_.insert(model.find(key));
      }
    }
  }

  std::vector<std::size_t> order() {
    for (std::size_t table = 0; table < model_.tables.size(); ++table) visit(table);
    return std::move(order_);
  }

  // Keys lead nowhere else, few columns, none of them a moment, and others refer to it: names and
  // codes.
  bool is_lookup(std::size_t table) const {
    const TableSchema& schema = model_.tables[table].schema;
    const bool has_moment =
        std::any_of(schema.columns.begin(), schema.columns.end(), [](const ColumnSchema& column) {
          return column.type == ColumnType::date || column.type == ColumnType::timestamp;
        });
    return referenced_.contains(table) && schema.foreign_keys.empty() && !has_moment &&
           schema.columns.size() <= most_lookup_columns;
  }

 private:
  enum class State { new_one, on_the_way, done };

  void visit(std::size_t table) {
    if (states_[table] != State::new_one) return;
    states_[table] = State::on_the_way;
    for (const ForeignKey& key : model_.tables[table].schema.foreign_keys) {
      if (const std::size_t parent = model_.find(key); parent < states_.size()) visit(parent);
    }
    states_[table] = State::done;
    if (!model_.tables[table].is_kept) order_.push_back(table);
  }

  const DatabaseModel& model_;
  std::vector<State> states_;
  std::set<std::size_t> referenced_;
  std::vector<std::size_t> order_;
};

}  // namespace

std::vector<std::size_t> tables_in_order(const DatabaseModel& model) {
  return Counter(model).order();
}

std::vector<std::int64_t> wished_records(const DatabaseModel& model, const RecordWish& wish) {
  std::vector<std::int64_t> records(model.tables.size());
  const Counter counter(model);
  for (const std::size_t table : tables_in_order(model)) {
    const ImportedTable& each = model.tables[table];
    std::int64_t count = counter.is_lookup(table) ? lookup_records : parent_records;
    for (const ForeignKey& key : each.schema.foreign_keys) {
      const std::size_t parent = model.find(key);
      if (key.is_to_own_table || parent == model.tables.size() || counter.is_lookup(parent))
        continue;
      count = std::max(count, std::min(records[parent] * children, most_default_records));
    }
    if (wish.scale && each.rows > 0) {
      const double scaled = std::round(static_cast<double>(each.rows) * *wish.scale);
      count = static_cast<std::int64_t>(std::clamp(scaled, 1.0, static_cast<double>(most_records)));
    }
    records[table] = wish.records.value_or(count);
  }
  return records;
}

}  // namespace korvex::host
