#include "host/layout/own_items.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "platform/printable_text.h"

namespace korvex::host {

bool is_plain(const Layout& layout) {
  return std::all_of(layout.items.begin(), layout.items.end(),
                     [](const LayoutItem& item) { return is_plain(item); });
}

std::vector<ReferenceTargets> follow_references(const Layout& layout) {
  const std::vector<LayoutItem>& items = layout.items;
  std::unordered_map<std::string_view, std::size_t> places;
  for (std::size_t i = 0; i < items.size(); ++i) places.try_emplace(items[i].name, i);
  const auto refers = [&](std::size_t i) {
    return items[i].values != nullptr && items[i].values->source == ValueSource::reference;
  };
  const auto target_of = [&](std::size_t i) -> std::optional<std::size_t> {
    const auto found = refers(i) ? places.find(items[i].values->item_name) : places.end();
    return found == places.end() ? std::nullopt : std::optional(found->second);
  };
  std::vector<ReferenceTargets> targets(items.size());
  std::vector<bool> is_followed(items.size());
  for (std::size_t i = 0; i < items.size(); ++i) {
    std::vector<std::size_t> path;
    for (std::optional<std::size_t> next = i; next && !is_followed[*next];
         next = target_of(*next)) {
      is_followed[*next] = true;
      path.push_back(*next);
    }
    for (; !path.empty(); path.pop_back()) {
      const std::size_t place = path.back();
      if (!refers(place)) targets[place].end = &items[place];
      if (const auto target = target_of(place)) {
        targets[place] = targets[*target];
        targets[place].go_beyond_module |= !is_plain(items[*target]);
      }
    }
  }
  return targets;
}

std::vector<bool> engine_items(const Layout& layout) {
  const std::vector<ReferenceTargets> targets = follow_references(layout);
  std::vector<bool> from_engine;
  for (std::size_t i = 0; i < layout.items.size(); ++i) {
    const ItemValues* values = layout.items[i].values.get();
    const bool has_way = values != nullptr && values->leads_through();
    const bool is_taken_over = !has_way && targets[i].go_beyond_module;
    const LayoutItem* end = targets[i].end;
    const bool is_own =
        end != nullptr && end->values != nullptr && end->values->source == ValueSource::own;
    from_engine.push_back(!is_taken_over && !is_own);
  }
  return from_engine;
}

std::vector<LayoutError> find_own_keys(const Layout& layout) {
  std::vector<LayoutError> errors;
  const OwnKey* first = nullptr;
  std::string first_item;
  std::size_t others = 0;
  for (const LayoutItem& item : layout.items) {
    errors.insert(errors.end(), item.beyond_code_page.begin(), item.beyond_code_page.end());
    if (is_plain(item)) continue;
    if (first != nullptr) {
      ++others;
      continue;
    }
    first = &item.values->own_keys.front();
    first_item = platform::printable(item.name);
  }
  if (first == nullptr) return errors;
  std::string text = "item " + first_item + ": " + first->text + " is unknown to this command";
  if (others > 0) {
    text += ", and so are keys of " + std::to_string(others) +
            (others == 1 ? " other item" : " other items");
  }
  errors.push_back({first->place, text + ", expected values that a data file can be generated "
                                         "from; \"korvex export\" writes these"});
  return errors;
}

}  // namespace korvex::host
