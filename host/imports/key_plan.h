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
  bool takes_rows = false;  // that the parent has, not new ones
  bool is_unique = false;   // each record of the parent once
  bool has_each = false;    // so many records to each of the parent, one after the other
  bool has_within = false;  // different in each group of the key with each
  std::string joint = {};   // together with other keys of the name, each combination once
};

// Where a column's values come from, as far as keys and unique sets decide that.
struct ColumnRole {
  enum class Kind {
    own,    // values of its own
    key,    // a column of a key
    line,   // the place within the group of the key with each
    row,    // of the list of rows that fit together
    empty,  // NULL: a key that can't be combined with another one
  };
  Kind kind = Kind::own;
  std::size_t key = 0;      // among the plan's
  std::size_t place = 0;    // in the key
  bool is_unique = false;   // own: no value twice
  bool is_fresh = false;    // own: no value that rows have already
  bool has_within = false;  // own: no value twice in a group of the key with each
  std::string joint;        // own
};

// What ways can't promise, and a list of rows can: keys that share columns or that a condition
// compares, and unique sets over parts of keys.
struct RowSet {
  std::vector<const ForeignKey*> keys;
  std::vector<std::size_t> columns;  // of the keys, and others that the rows must fit
};

struct KeyPlan {
  std::vector<KeyUse> keys;
  RowSet rows;
  std::vector<ColumnRole> columns;
  std::optional<std::size_t> hub;    // the key with each
  std::vector<std::string> remarks;  // what is not certain

  bool has_own_values(std::size_t column) const {
    return columns[column].kind == ColumnRole::Kind::own;
  }
};

// `summed` is a key that is to have each, because a total is made of its records; null without.
// `fresh_values` tells how many values a column has beside those that it holds, up to some more
// than there are to be records. `has_lists` is whether there may be a list of rows.
using FreshValues = std::function<std::uint64_t(std::size_t)>;
KeyPlan plan_keys(const DatabaseModel& model, std::size_t table, std::int64_t records,
                  const ForeignKey* summed, const FreshValues& fresh_values, bool has_lists);

// The columns' names in a row, as messages call them.
std::string column_names(const TableSchema& table, const std::vector<std::size_t>& columns);

}  // namespace korvex::host
