#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/layout/layout.h"
#include "host/sources/scale.h"
#include "host/sources/text_shape.h"
#include "lists/enumeration_value.h"
#include "settings/col_inf.h"

namespace korvex::host {

// Whether an item has nothing but values that were found to fit before there are records: the
// engine's are right by themselves, and those of rows are read as a whole.
bool is_checked_before(const LayoutItem& item, const ClFmtColInf* column);

// What an item asks of values that do not come from the module, in UTF-8: what the module asks of a
// list's, but that characters are counted where the layout is in UTF-8, and moments are taken.
class ValueRule {
 public:
  ValueRule(const LayoutItem& item, const Layout& layout);

  // Why the text cannot be in the item: "has 31 characters, expected at most 30"; nothing when
  // it can.
  std::optional<std::string> fault(std::string_view text) const;

  // Whether all texts of a shape can; false where it does not tell.
  bool fits(const sources::TextShape& shape) const;

 private:
  const Layout* layout_;
  std::size_t most_;  // characters of a text
  bool is_text_;
  std::unique_ptr<sources::Scale> moments_;  // null for what is no date, time or timestamp
  EnumerationRule list_rule_;
};

}  // namespace korvex::host
