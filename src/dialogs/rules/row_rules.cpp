#include "dialogs/rules/row_rules.h"

#include <algorithm>

namespace korvex {

namespace {

// A text that never changes gives nothing to repeat.
bool is_fixed_text(const ClColMain& main, const ClDGCol& item) {
  const ClFmtColInf* column = main.settings.find_column(item.item_number);
  return column != nullptr && column->elements.size() == 1 &&
         column->elements.front()->record.kind == format_kind::fixed;
}

RepeatFields repeat_of(const ItemDisplay& display) {
  if (!display.is_repeated) return {};
  return {true, static_cast<std::uint32_t>(display.repeat_level),
          static_cast<std::uint32_t>(display.repeat_count)};
}

}  // namespace

std::optional<RowRules> row_rules(const ClColMain& main, ClDGCol& item) {
  const ItemDisplay& display = item.display();
  const RepeatFields repeat = repeat_of(display);
  // Settings without changing values get no repeat. One that they had before still counts, so it is
  // shown and can be taken away.
  const RowRules unchanging = {
      .may_repeat = repeat.is_repeated, .may_delete = true, .fields = repeat};
  switch (display.generation_type) {
    case generation_type::none:
      return RowRules{};
    case generation_type::initial_value:
      return unchanging;
    case generation_type::range:
    case generation_type::reference:
    case generation_type::enumeration:
      if (is_fixed_text(main, item)) return unchanging;
      return RowRules{.may_repeat = true,
                      .may_edit_repeat = repeat.is_repeated,
                      .may_delete = true,
                      .fields = repeat};
    default:
      return std::nullopt;
  }
}

void store_repeat(const ClColMain& main, ClDGCol& item, const RepeatFields& fields) {
  const auto level = static_cast<RepeatLevel>(fields.level);
  const auto count = static_cast<std::int32_t>(fields.count);
  ItemDisplay& display = item.display();
  display.is_repeated = fields.is_repeated;
  display.repeat_level = level;
  display.repeat_count = count;
  if (ClFmtColInf* column = main.settings.find_column(item.item_number)) {
    column->record.repeat_flag = flag_of(fields.is_repeated);
    column->record.repeat_level = level;
    column->record.repeat_count = count;
  }
}

std::uint32_t highest_repeat_level(const ClColMain& main) {
  std::uint32_t highest = 0;
  for (const auto& item : main.items) {
    const ItemDisplay& display = item->display();
    // Levels below 0 come from crafted settings only.
    if (!display.is_repeated || display.repeat_level < RepeatLevel::none) continue;
    highest = std::max(highest, static_cast<std::uint32_t>(display.repeat_level));
  }
  return highest;
}

}  // namespace korvex
