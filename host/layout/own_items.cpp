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

namespace {

// What an item's references lead to.
struct Targets {
  bool go_beyond_module = false;
  bool end_in_own_source = false;
};

// For each item. Every reference is followed once, however long the chain is; one into a circle, or
// into nothing, leads to nothing and is left to the engine, which refuses it.
std::vector<Targets> follow_references(const Layout& layout) {
  const std::vector<LayoutItem>& items = layout.items;
  std::unordered_map<std::string_view, std::size_t> places;
  for (std::size_t i = 0; i < items.size(); ++i) places.try_emplace(items[i].name, i);
  const auto target_of = [&](std::size_t i) -> std::optional<std::size_t> {
    const ItemValues* values = items[i].values.get();
    if (values == nullptr || values->source != ValueSource::reference) return std::nullopt;
    const auto found = places.find(values->item_name);
    return found == places.end() ? std::nullopt : std::optional(found->second);
  };
  std::vector<Targets> targets(items.size());
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
      const ItemValues* values = items[place].values.get();
      Targets& own = targets[place];
      own.end_in_own_source = values != nullptr && values->source == ValueSource::own;
      if (const auto target = target_of(place)) {
        own = targets[*target];
        own.go_beyond_module |= !is_plain(items[*target]);
      }
    }
  }
  return targets;
}

}  // namespace

std::vector<bool> engine_items(const Layout& layout) {
  const std::vector<Targets> targets = follow_references(layout);
  std::vector<bool> from_engine;
  for (std::size_t i = 0; i < layout.items.size(); ++i) {
    const LayoutItem& item = layout.items[i];
    const bool has_way = item.values && item.values->leads_through();
    const bool is_taken_over = !has_way && targets[i].go_beyond_module;
    from_engine.push_back(!is_taken_over && !targets[i].end_in_own_source);
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
