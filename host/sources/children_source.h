#pragma once

#include <memory>

#include "host/sources/decimal.h"
#include "host/sources/field.h"
#include "host/sources/groups.h"

namespace korvex::sources {

// What is made of the values that a record's children have in one field.
enum class Fold {
  sum,    // of numbers; zero without any
  count,  // of the children, or of those that have a value
  least,  // no value without any
  most,
};

// The children of each record. What is pointed to must outlive the source, and may be nothing that
// others ask for records of their own.
struct Children {
  std::shared_ptr<const Groups> groups;
  Field* key = nullptr;    // a child without a value there is nobody's; null: all have one
  Field* field = nullptr;  // null: to count the children themselves
};

// How a fold goes about it.
struct FoldRules {
  Fold fold = Fold::sum;
  Comparison comparison = Comparison::as_numbers;
  unsigned decimals = 0;    // a sum has at least so many
  void (*pause)() = [] {};  // called now and then, however many children there are; may throw
};

// Folds a field over the records whose parent a record is: those of its group. Where values cannot
// be added (a text that is no number, or a sum beyond all bounds), a sum is no value rather than a
// wrong one. Takes as long as there are children.
std::unique_ptr<Source> make_children_source(const Children& children, const FoldRules& rules);

}  // namespace korvex::sources
