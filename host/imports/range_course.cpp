#include "host/imports/range_course.h"

#include <utility>

#include "courses/item_facts.h"
#include "settings/lvl_inf.h"

namespace korvex::host {

std::optional<RangeCourse> RangeCourse::of(const ItemAttributes& item, const RangeTexts& texts) {
  constexpr ItemNumber number{1};
  ClFmtLvlInf level;
  if (!level.check_and_store(number, item, texts, {})) return std::nullopt;
  const ClFmtColInf& column = *level.find_column(number);
  auto course = ItemCourse::of(column, layout_kind::table);
  if (!course) return std::nullopt;
  const ItemFacts facts = item_facts(column, *course);
  const std::uint64_t values = facts.distinct.value_or(facts.different);
  return RangeCourse(std::move(*course), values);
}

std::string RangeCourse::text(std::uint64_t step) const {
  std::string whole;
  char text[Course::max_text_size];
  for (const auto& element : course_.elements()) {
    element->write(step, text);
    whole.append(text, element->facts().size);
  }
  return whole;
}

}  // namespace korvex::host
