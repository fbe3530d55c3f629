#include "courses/item_facts.h"

#include <algorithm>
#include <unordered_set>

#include "values/record_text.h"

namespace korvex {

namespace {

ByteCount bytes_of_cycle(const std::vector<TextRun>& texts, Steps count) {
  ByteCount bytes = 0;
  for (const TextRun& run : texts) {
    const Steps taken = std::min(run.count, count);
    bytes += ByteCount{taken} * run.bytes;
    count -= taken;
    if (count == 0) break;
  }
  return bytes;
}

std::vector<TextRun> text_runs(const ItemCourse& course) {
  const Steps end = course.end();
  if (!course.is_cut_at_end()) return {{end, course.size()}};
  const std::size_t last = course.size_at(end - 1);
  if (end == 1) return {{1, last}};
  return {{end - 1, course.size()}, {1, last}};
}

// Elements that come back without ever giving a text twice in between: together they give all
// different texts for the least common multiple of their periods.
bool is_wheel(const CourseFacts& element) {
  return element.period != endless && element.different >= element.period;
}

void tell_values(const ClFmtColInf& column, const ItemCourse& course, ItemFacts& item) {
  Steps wheels = 1;
  Steps longest = 1;
  Steps period = 1;
  bool all_wheels = true;
  const CourseFacts* only = nullptr;
  int variable = 0;
  for (std::size_t i = 0; i < course.elements().size(); ++i) {
    if (column.elements[i]->record.kind == format_kind::fixed) continue;
    const CourseFacts& facts = course.elements()[i]->facts();
    only = &facts;
    ++variable;
    longest = std::max(longest, facts.different);
    period = common_multiple(period, facts.period);
    all_wheels = all_wheels && is_wheel(facts);
    if (is_wheel(facts)) wheels = common_multiple(wheels, facts.period);
  }
  item.different = std::max(longest, wheels);
  if (item.has_end()) {
    item.period = item.end;
  } else if (period != endless) {
    item.period = period;
  }
  if (item.period && (item.different >= *item.period || all_wheels)) {
    item.different = std::min(item.different, *item.period);
    item.distinct = item.different;
  } else if (variable == 1) {
    item.distinct = only->distinct;
  }
}

}  // namespace

ByteCount ItemFacts::bytes_of_cycles(Steps values) const {
  const Steps cycles = values / end;
  const ByteCount whole = cycles == 0 ? 0 : bytes_of_cycle(texts, end);
  return cycles * whole + bytes_of_cycle(texts, values % end);
}

ByteCount ItemFacts::bytes(Steps values) const {
  return runs_empty ? bytes_of_cycle(texts, std::min(values, end)) : bytes_of_cycles(values);
}

ItemFacts item_facts(const ClFmtColInf& column, const ItemCourse& course) {
  ItemFacts item;
  item.runs_empty = column.record.exceeded_action != exceeded_action::repeat;
  item.end = course.end();
  item.texts = text_runs(course);
  if (column.record.generation_type == generation_type::initial_value) {
    item.period = item.distinct = 1;
    return item;
  }
  tell_values(column, course, item);
  for (std::size_t i = 0; i < course.elements().size(); ++i) {
    const Steps past_end = course.elements()[i]->facts().past_end;
    if (past_end >= item.end) continue;
    const std::string_view directive = field_text(column.elements[i]->record.text);
    item.passed_ends.push_back({"%" + std::string(directive), past_end});
  }
  return item;
}

ItemFacts list_facts(const ClEnumDataList& values, bool runs_empty) {
  ItemFacts item;
  item.runs_empty = runs_empty;
  item.end = values.count();
  item.period = item.end;
  item.different = 0;
  std::unordered_set<std::string_view> met;
  for (EnumCursor cursor(values); !cursor.is_at_end(); cursor.next()) {
    const ClEnumData value = cursor.value();
    if (item.texts.empty() || item.texts.back().bytes != value.size()) {
      item.texts.push_back({0, value.size()});
    }
    ++item.texts.back().count;
    if (met.insert(value).second && item.different == cursor.index()) {
      ++item.different;
    }
  }
  item.distinct = met.size();
  return item;
}

}  // namespace korvex
