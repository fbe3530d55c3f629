#include "courses/literal_item.h"

#include <algorithm>

#include "courses/item_course.h"

namespace korvex {

LiteralItem::LiteralItem(const ClFmtColInf& column, LayoutKind layout_kind) {
  const ElementContext context = element_context(column, layout_kind);
  for (const auto& element : column.elements) {
    elements_.push_back(make_literal_element(context, *element));
  }
}

LiteralItem::LiteralItem(const LiteralItem& other) : pass_(other.pass_) {
  for (const auto& element : other.elements_) elements_.push_back(element->copy());
}

ErrorCode LiteralItem::write(char*& out, bool& ended) {
  pass_.date_overflow = false;
  for (const auto& element : elements_) {
    if (element->is_off()) continue;
    out = element->write(out);
    const StepOutcome outcome = element->advance(pass_);
    if (outcome == StepOutcome::going) continue;
    if (outcome == StepOutcome::bad_kind) return error::bad_attribute;
    if (outcome == StepOutcome::bad_sub_kind) return error::signed_format_for_unsigned;
    ended = true;
    if (outcome == StepOutcome::cut) break;
  }
  return error::none;
}

void LiteralItem::restart() {
  for (const auto& element : elements_) element->restart();
}

void LiteralItem::switch_off() {
  for (const auto& element : elements_) element->switch_off();
}

bool LiteralItem::shows_nothing() const {
  return std::all_of(elements_.begin(), elements_.end(),
                     [](const auto& element) { return element->is_off(); });
}

}  // namespace korvex
