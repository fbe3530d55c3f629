#include "host/databases/load_order.h"

#include <algorithm>
#include <utility>

namespace korvex::host {

namespace {

using Tables = std::vector<std::size_t>;

// A foreign key from one table to another.
struct Reference {
  std::size_t from = 0;
  std::size_t to = 0;
  bool can_wait = false;
};

std::vector<Reference> references_among(const std::vector<TableSchema>& tables) {
  std::vector<Reference> references;
  for (std::size_t from = 0; from < tables.size(); ++from) {
    for (const ForeignKey& key : tables[from].foreign_keys) {
      for (std::size_t to = 0; to < tables.size(); ++to) {
        if (tables[to].quoted_name == key.quoted_table) {
          references.push_back({from, to, key.can_wait});
        }
      }
    }
  }
  return references;
}

// The tables that refer to each other in circles, a set for each circle, and sets of one for all
// others; each set after those that it refers to. A walk along the references finds them: a table
// that reaches none that was met before it is the first of its set. Without recursion, as a chain
// of tables may be of any length.
class Circles {
 public:
  Circles(const Tables& tables, const std::vector<Reference>& references, std::size_t count)
      : targets_(count), met_(count, 0), lowest_(count, 0), is_open_(count, false) {
    std::vector<bool> is_among(count, false);
    for (const std::size_t table : tables) is_among[table] = true;
    for (const Reference& each : references) {
      if (is_among[each.from] && is_among[each.to]) targets_[each.from].push_back(each.to);
    }
    // Whatever order a database names its keys in, the tables come in the same.
    for (Tables& targets : targets_) std::sort(targets.begin(), targets.end());
    for (const std::size_t table : tables) {
      if (met_[table] == 0) walk_from(table);
    }
  }

  std::vector<Tables> take_sets() { return std::move(sets_); }

 private:
  struct Step {
    std::size_t table;
    std::size_t next_target = 0;
  };

  void walk_from(std::size_t table) {
    meet(table);
    while (!path_.empty()) {
      Step& step = path_.back();
      if (step.next_target == targets_[step.table].size()) {
        leave();
        continue;
      }
      const std::size_t target = targets_[step.table][step.next_target++];
      if (met_[target] == 0) {
        meet(target);
      } else if (is_open_[target]) {
        lowest_[step.table] = std::min(lowest_[step.table], met_[target]);
      }
    }
  }

  void meet(std::size_t table) {
    met_[table] = lowest_[table] = ++count_;
    is_open_[table] = true;
    open_.push_back(table);
    path_.push_back({table});
  }

  void leave() {
    const std::size_t table = path_.back().table;
    path_.pop_back();
    if (!path_.empty()) {
      std::size_t& lowest = lowest_[path_.back().table];
      lowest = std::min(lowest, lowest_[table]);
    }
    if (lowest_[table] != met_[table]) return;
    const auto first = std::find(open_.begin(), open_.end(), table);
    sets_.emplace_back(first, open_.end());
    for (const std::size_t each : sets_.back()) is_open_[each] = false;
    open_.erase(first, open_.end());
    std::sort(sets_.back().begin(), sets_.back().end());
  }

  std::vector<Tables> targets_;      // by table
  std::vector<std::size_t> met_;     // by table: when the walk came to it, from 1
  std::vector<std::size_t> lowest_;  // by table: the earliest that it reaches
  std::vector<bool> is_open_;        // by table: its set is not known yet
  Tables open_;
  std::vector<Step> path_;
  std::vector<Tables> sets_;
  std::size_t count_ = 0;
};

}  // namespace

LoadOrder order_of_load(const std::vector<TableSchema>& tables) {
  const std::vector<Reference> references = references_among(tables);
  std::vector<Reference> urgent;
  std::copy_if(references.begin(), references.end(), std::back_inserter(urgent),
               [](const Reference& each) { return !each.can_wait; });
  Tables all(tables.size());
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
  LoadOrder order;
  std::size_t cycles = 0;
  for (const Tables& set : Circles(all, references, tables.size()).take_sets()) {
    for (const Tables& part : Circles(set, urgent, tables.size()).take_sets()) {
      const std::size_t cycle = part.size() > 1 ? ++cycles : 0;
      for (const std::size_t table : part) order.tables.push_back({table, cycle});
    }
  }
  std::vector<std::size_t> places(tables.size());
  for (std::size_t i = 0; i < order.tables.size(); ++i) places[order.tables[i].table] = i;
  order.defers_keys = std::any_of(references.begin(), references.end(), [&](const Reference& each) {
    return each.can_wait && places[each.to] >= places[each.from];
  });
  return order;
}

}  // namespace korvex::host
