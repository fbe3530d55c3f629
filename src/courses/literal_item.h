#pragma once

#include <memory>
#include <vector>

#include "courses/literal_element.h"
#include "settings/col_inf.h"
#include "values/error_codes.h"

namespace korvex {

// An item whose elements go step by step, because its settings are none that the checks of this
// module would have made. Keeps references to the settings, which must outlive it.
class LiteralItem {
 public:
  LiteralItem(const ClFmtColInf& column, LayoutKind layout_kind);
  LiteralItem(const LiteralItem& other);
  LiteralItem(LiteralItem&&) = default;
  LiteralItem& operator=(LiteralItem&&) = default;

  // Bytes that write() may need.
  std::size_t room() const { return elements_.size() * Course::max_text_size; }

  // Writes the text at `out`, moves `out` to its end and takes the step. `ended` becomes true when
  // the item's cycle is over. Unknown settings have a code: -7, -40.
  ErrorCode write(char*& out, bool& ended);

  void restart();
  void switch_off();

  // No element has a text left.
  bool shows_nothing() const;

 private:
  std::vector<std::unique_ptr<LiteralElement>> elements_;
  ItemPass pass_;
};

}  // namespace korvex
