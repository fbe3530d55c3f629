#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/sources/field.h"
#include "host/sources/template_text.h"

namespace korvex::sources {

// Text as it stands, followed by the text of a field, if there is one.
struct ComposedPart {
  std::string literal;
  Field* field = nullptr;  // must outlive the source
  std::vector<Filter> filters;
};

// The texts of other fields of the same record, put together. A field without a value adds nothing;
// where no field has one, there is no text.
std::unique_ptr<Source> make_template_source(std::vector<ComposedPart> parts);

// Which of the parts' texts follow from the text of the whole, as far as can be told from their
// shapes: those that are reached from the front or the back over parts of known size, or over
// digits that something other than a digit ends.
std::vector<bool> recoverable_parts(const std::vector<ComposedPart>& parts);

}  // namespace korvex::sources
