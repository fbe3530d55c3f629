#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "host/imports/key_plan.h"
#include "host/imports/lists.h"
#include "host/imports/planned_item.h"
#include "host/imports/table_planner.h"

namespace korvex::host {

// Makes the items that follow the keys of a table: the records of another layout, those of its own,
// or a list of the rows that are there.
class KeyItems {
 public:
  KeyItems(ImportPlan& plan, std::size_t table, const KeyPlan& keys, std::uint64_t most_in_group,
           PlannedTable& planned);

  // Whether a key takes the rows that are there, not those of a layout.
  bool is_list(std::size_t use) const;

  // The items of one key. Throws DatabaseError or Interrupted.
  void add(std::size_t use, std::vector<PlannedItem>& items);

  // The rows of the lists, by the places of their keys.
  const std::map<std::size_t, TextRows>& lists() const { return lists_; }

  // The place within the group of the key with each.
  ColumnValues line() const;

 private:
  void add_layout(const KeyUse& use, std::vector<PlannedItem>& items);
  void add_list(std::size_t place, std::vector<PlannedItem>& items);
  std::optional<TextRows> read_rows(const KeyUse& use, std::vector<PlannedItem>& items);
  void add_table(const KeyUse& use, const TextRows& rows, std::vector<PlannedItem>& items);
  void add_columns(const KeyUse& use, const TextRows& rows, std::vector<PlannedItem>& items);
  void add_own(const KeyUse& use, std::vector<PlannedItem>& items);
  void leave_empty(const KeyUse& use, const std::string& why, std::vector<PlannedItem>& items);
  std::vector<LayoutKey> way_of(const KeyUse& use) const;
  void finish(const KeyUse& use, std::vector<PlannedItem>& items) const;
  bool is_allowed(const KeyUse& use, const std::vector<std::string>& row) const;
  bool may_be_empty(const KeyUse& use, const std::vector<PlannedItem>& items) const;

  ImportPlan& plan_;
  const std::size_t table_;
  const TableSchema& schema_;
  const KeyPlan& keys_;
  const std::uint64_t most_in_group_;
  PlannedTable& planned_;
  std::map<std::size_t, TextRows> lists_;
};

}  // namespace korvex::host
