#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/sources/decimal.h"
#include "host/sources/field.h"
#include "host/sources/groups.h"
#include "host/sources/scale.h"
#include "host/sources/source.h"
#include "host/sources/template_text.h"
#include "host/ways/key.h"

namespace korvex::sources {

// The values of a field in the records of another table, or in those of its own: computed again,
// not looked up. The field must outlive the source, and may be none that others ask for the records
// of their own: it keeps the one that was asked for last.
std::unique_ptr<Source> make_key_source(Field& field, std::uint64_t records);

// The place of a record within its group: 1, 2, 3.
std::unique_ptr<Source> make_line_source(std::shared_ptr<Groups> groups);

// How far from another value, both ends included, in units of its scale. `least` is no more than
// `most`.
struct Distance {
  std::int64_t least = 0;
  std::int64_t most = 0;
};

// The value of another field of the same record, which must outlive the source, plus a distance
// that is drawn evenly. No value where the other has none. A value that is none of the scale, or
// too near to its end, is a BadValue.
std::unique_ptr<Source> make_offset_source(Field& of, std::unique_ptr<Scale> scale,
                                           ways::KeyFor<ways::Use::order> key, Distance distance);

// Text as it stands, followed by the text of a field, if there is one.
struct ComposedPart {
  std::string literal;
  Field* field = nullptr;  // must outlive the source
  std::vector<Filter> filters;
  TextSize most = {};  // of what the filters make of the field's texts, where that was looked at
};

// Finds out how large the filtered texts are, where the field's are known one by one.
void look_at_filtered(ComposedPart& part);

// The texts of other fields of the same record, put together. A field without a value adds nothing;
// where no field has one, there is no text.
std::unique_ptr<Source> make_template_source(std::vector<ComposedPart> parts);

// Which of the parts' texts follow from the text of the whole, as far as can be told from their
// shapes: those that are reached from the front or the back over parts of known size, or over
// digits that something other than a digit ends.
std::vector<bool> recoverable_parts(const std::vector<ComposedPart>& parts);

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
  Field* key = nullptr;    // a child without a value there has no parent; null: all have one
  Field* field = nullptr;  // null: to count the children themselves
};

// How to fold.
struct FoldRules {
  Fold fold = Fold::sum;
  Comparison comparison = Comparison::as_numbers;
  unsigned decimals = 0;    // a sum has at least so many
  void (*pause)() = [] {};  // called now and then, however many children there are; may throw
};

// Folds a field over the records whose parent a record is: those of its group. A value that
// cannot be added (a text that is no number, or a sum beyond all bounds) is a BadValue of the sum.
// Takes as long as there are children.
std::unique_ptr<Source> make_children_source(const Children& children, const FoldRules& rules);

}  // namespace korvex::sources
