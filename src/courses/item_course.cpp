#include "courses/item_course.h"

#include <algorithm>

#include "courses/make_course.h"

namespace korvex {

ElementContext element_context(const ClFmtColInf& column, LayoutKind layout_kind) {
  const FmtColRec& settings = column.record;
  return {layout_kind, settings.lead_element, settings.digits, settings.decimals,
          settings.increment};
}

std::optional<ItemCourse> ItemCourse::of(const ClFmtColInf& column, LayoutKind layout_kind) {
  ItemCourse item;
  item.sizes_.push_back(0);
  const bool has_values = column.record.generation_type != generation_type::initial_value;
  const ElementContext context = element_context(column, layout_kind);
  if (has_values) {
    for (const auto& element : column.elements) {
      const auto place = element_number(item.elements_.size());
      auto course = element->record.sequence == place ? make_course(context, *element) : nullptr;
      if (course == nullptr) return std::nullopt;
      item.sizes_.push_back(item.sizes_.back() + course->facts().size);
      item.elements_.push_back(std::move(course));
    }
    item.tell_end(column, context);
  }
  return item;
}

void ItemCourse::tell_end(const ClFmtColInf& column, const ElementContext& context) {
  shown_at_end_ = elements_.size();
  Steps overflow = endless;  // of the elements so far
  for (std::size_t i = 0; i < elements_.size(); ++i) {
    const CourseFacts& facts = elements_[i]->facts();
    const FmtItemRec& settings = column.elements[i]->record;
    Steps own_end = facts.end;
    bool cuts = facts.cuts;
    // A date or timestamp that leaves the calendar ends the cycle of one that comes later, if that
    // is the lead.
    const bool minds_overflow =
        settings.kind == format_kind::date || settings.kind == format_kind::timestamp;
    if (minds_overflow && context.leads(settings) && overflow != endless && overflow <= own_end) {
      own_end = overflow;
      cuts = true;
    }
    if (own_end < end_) shown_at_end_ = elements_.size();
    if (own_end <= end_ && own_end != endless && cuts)
      shown_at_end_ = std::min(shown_at_end_, i + 1);
    end_ = std::min(end_, own_end);
    if (facts.overflows) overflow = std::min(overflow, facts.restart);
  }
}

}  // namespace korvex
