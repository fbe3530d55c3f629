#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "host/imports/database_model.h"

namespace korvex::host {

// Which keys of a table no way can follow side by side, so that a list of rows has them.
struct RowChoice {
  std::vector<const ForeignKey*> keys;
  std::set<std::size_t> columns;     // of these keys, and others that the rows must fit
  std::set<const ForeignKey*> left;  // keys that lead back to themselves
  std::vector<std::size_t> empty;    // columns of these keys, which are to be NULL
};

// `wanted` are columns that are to be in the rows, whatever else says so.
RowChoice choose_rows(const DatabaseModel& model, std::size_t table,
                      const std::set<std::size_t>& wanted);

}  // namespace korvex::host
