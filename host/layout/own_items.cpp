#include "host/layout/own_items.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "platform/printable_text.h"

namespace korvex::host {

bool is_plain(const Layout& layout) {
  return std::all_of(layout.items.begin(), layout.items.end(),
                     [](const LayoutItem& item) { return is_plain(item); });
}

std::vector<bool> engine_items(const Layout& layout) {
  std::unordered_map<std::string_view, const LayoutItem*> names;
  for (const LayoutItem& item : layout.items) names.try_emplace(item.name, &item);
  std::vector<bool> from_engine;
  for (const LayoutItem& item : layout.items) {
    const ItemValues* values = item.values ? &*item.values : nullptr;
    bool is_taken_over = false;
    // A circle of references, or one into nothing, is left to the engine, which refuses it.
    for (std::size_t i = 0; i < layout.items.size() && values != nullptr &&
                            values->source == ValueSource::reference && !is_taken_over;
         ++i) {
      const auto target = names.find(values->item_name);
      if (target == names.end()) break;
      const bool has_way = item.values->leads_through();
      is_taken_over = !has_way && !is_plain(*target->second);
      values = target->second->values ? &*target->second->values : nullptr;
    }
    const bool is_own = values != nullptr && values->source == ValueSource::own;
    from_engine.push_back(!is_taken_over && !is_own);
  }
  return from_engine;
}

std::vector<LayoutError> find_own_keys(const Layout& layout) {
  std::vector<LayoutError> errors;
  for (const LayoutItem& item : layout.items) {
    errors.insert(errors.end(), item.beyond_code_page.begin(), item.beyond_code_page.end());
    if (is_plain(item)) continue;
    const OwnKey& first = item.values->own_keys.front();
    errors.push_back(
        {first.place, "item " + platform::printable(item.name) + ": " + first.text +
                          " is unknown to this command, expected values that a data "
                          "file can be generated from; \"korvex export\" writes these"});
  }
  return errors;
}

}  // namespace korvex::host
