#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/imports/database_model.h"

namespace korvex::host {

// A foreign key that items of a table follow.
struct KeyUse {
  const ForeignKey* key = nullptr;
  std::size_t parent = 0;   // among the tables; their number for one that is not there
  bool is_unique = false;   // each record of the parent once
  bool has_each = false;    // so many records to each of the parent, one after the other
  bool has_within = false;  // different in each group of the key with each
  std::string joint;        // together with other keys of the name, each combination once
};

// Where a column's values come from, as far as keys and unique sets decide that.
struct ColumnRole {
  enum class Kind {
    own,    // values of its own
    key,    // a column of a key
    line,   // the place within the group of the key with each
    empty,  // NULL: a key that can't be followed beside another one
  };
  Kind kind = Kind::own;
  std::size_t key = 0;      // among the plan's
  std::size_t place = 0;    // in the key
  bool is_unique = false;   // own: no value twice
  bool has_within = false;  // own: no value twice in a group of the key with each
  std::string joint;        // own
};

struct KeyPlan {
  std::vector<KeyUse> keys;
  std::vector<ColumnRole> columns;
  std::optional<std::size_t> hub;    // the key with each
  std::vector<std::string> remarks;  // what can't be promised

  bool has_own_values(std::size_t column) const {
    return columns[column].kind == ColumnRole::Kind::own;
  }
};

// `summed` is a key that is to have each, because a total is made of its records; null without.
// `has_enough` tells whether a column has values for all records, beside those that it holds.
KeyPlan plan_keys(const DatabaseModel& model, std::size_t table, const ForeignKey* summed,
                  const std::function<bool(std::size_t)>& has_enough);

// The columns' names in a row, as messages call them.
std::string column_names(const TableSchema& table, const std::vector<std::size_t>& columns);

}  // namespace korvex::host
