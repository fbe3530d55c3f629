#include "host/records/item_sequence.h"

#include <algorithm>
#include <unordered_set>

#include "format/record_text.h"

namespace korvex::host {

namespace {

struct Element {
  const FmtItemRec* settings;
  ElementSequence sequence;

  bool is_fixed() const { return settings->kind == format_kind::fixed; }
  bool may_overflow() const {
    return settings->kind == format_kind::date || settings->kind == format_kind::timestamp;
  }
};

std::optional<std::vector<Element>> sequences_of(const ClFmtColInf& column,
                                                 const SequenceContext& context) {
  std::vector<Element> elements;
  for (const auto& element : column.elements) {
    const bool is_in_order =
        element->record.sequence == static_cast<std::int32_t>(elements.size()) + 1;
    const auto sequence = element_sequence(context, *element);
    if (!is_in_order || !sequence) return std::nullopt;
    elements.push_back({&element->record, *sequence});
  }
  return elements;
}

// A date or timestamp that leaves the calendar ends the cycle of a date or timestamp behind it, if
// that is the lead.
void heed_overflows(std::vector<Element>& elements, std::int32_t lead_element) {
  std::uint64_t overflow = endless;
  for (Element& element : elements) {
    ElementSequence& own = element.sequence;
    if (element.settings->sequence == lead_element && element.may_overflow() &&
        overflow <= own.end && overflow != endless) {
      own.end = overflow;
      own.cuts = true;
    }
    overflow = std::min(overflow, own.overflow);
  }
}

std::vector<TextRun> text_runs(const std::vector<Element>& elements, std::uint64_t end) {
  std::uint64_t whole = 0;
  std::uint64_t last = 0;
  bool is_cut = false;
  for (const Element& element : elements) {
    whole += element.sequence.size;
    if (!is_cut) last = whole;
    is_cut = is_cut || (end != endless && element.sequence.end == end && element.sequence.cuts);
  }
  if (last == whole) return {{end, whole}};
  if (end == 1) return {{1, last}};
  return {{end - 1, whole}, {1, last}};
}

// Elements that come back without ever giving a text twice in between: together they give all
// different texts for the least common multiple of their periods.
bool is_wheel(const Element& element) {
  const ElementSequence& own = element.sequence;
  return own.period != endless && own.different >= own.period;
}

void tell_values(const std::vector<Element>& elements, ItemSequence& item) {
  std::uint64_t wheels = 1;
  std::uint64_t longest = 1;
  bool all_wheels = true;
  bool all_periods = true;
  std::uint64_t period = 1;
  const Element* only = nullptr;
  int variable = 0;
  for (const Element& element : elements) {
    if (element.is_fixed()) continue;
    only = &element;
    ++variable;
    longest = std::max(longest, element.sequence.different);
    period = common_multiple(period, element.sequence.period);
    all_periods = all_periods && element.sequence.period != endless;
    all_wheels = all_wheels && is_wheel(element);
    if (is_wheel(element)) wheels = common_multiple(wheels, element.sequence.period);
  }
  item.different = std::max(longest, wheels);
  if (item.has_end()) {
    item.period = item.end;
  } else if (all_periods) {
    item.period = period;
  }
  if (item.period && (item.different >= *item.period || all_wheels)) {
    item.different = std::min(item.different, *item.period);
    item.distinct = item.different;
  } else if (variable == 1) {
    item.distinct = only->sequence.distinct;
  }
}

}  // namespace

std::optional<ItemSequence> item_sequence(const ClFmtColInf& column, std::int32_t layout_kind) {
  ItemSequence item;
  const FmtColRec& settings = column.record;
  item.runs_empty = settings.exceeded_action != exceeded_action::repeat;
  if (settings.generation_type == generation_type::initial_value) {
    item.texts = {{endless, 0}};
    item.period = item.distinct = 1;
    return item;
  }
  const SequenceContext context = {layout_kind, settings.lead_element, settings.digits,
                                   settings.decimals, settings.increment};
  auto elements = sequences_of(column, context);
  if (!elements) return std::nullopt;
  heed_overflows(*elements, settings.lead_element);
  for (const Element& element : *elements) item.end = std::min(item.end, element.sequence.end);
  item.texts = text_runs(*elements, item.end);
  tell_values(*elements, item);
  for (const Element& element : *elements) {
    if (element.sequence.past_end >= item.end) continue;
    item.passed_ends.push_back(
        {"%" + std::string(field_text(element.settings->text)), element.sequence.past_end});
  }
  return item;
}

ItemSequence list_sequence(const ClEnumDataList& values, bool runs_empty) {
  ItemSequence item;
  item.runs_empty = runs_empty;
  item.end = static_cast<std::uint64_t>(values.count());
  item.period = item.end;
  item.different = 0;
  std::unordered_set<std::string_view> met;
  for (EnumCursor cursor(values); !cursor.is_at_end(); cursor.next()) {
    const ClEnumData value = cursor.value();
    if (item.texts.empty() || item.texts.back().bytes != value.size()) {
      item.texts.push_back({0, value.size()});
    }
    ++item.texts.back().count;
    if (met.insert(value).second && item.different == static_cast<std::uint64_t>(cursor.index())) {
      ++item.different;
    }
  }
  item.distinct = met.size();
  return item;
}

}  // namespace korvex::host
