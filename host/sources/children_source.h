#pragma once

#include <memory>

#include "host/sources/field.h"
#include "host/ways/group_sizes.h"

namespace korvex::sources {

// What is made of the values that a record's children have in one field.
enum class Fold {
  sum,    // of numbers; "0" without any
  count,  // of the children that have a value
  least,  // of numbers by size, of other texts by their bytes; no value without any
  most,
};

// Folds a field of another table over the records whose parent a record is: those of its group.
// Where values cannot be added (a text that is no number, or a sum beyond all bounds), a sum is no
// value rather than a wrong one. Takes as long as there are children.
std::unique_ptr<Source> make_children_source(Fold fold, std::shared_ptr<Field> field,
                                             const ways::GroupSizes& children);

}  // namespace korvex::sources
