#include "host/records/layout_keys.h"

#include <map>
#include <utility>

#include "host/process/distinct_files.h"

namespace korvex::host {

std::vector<LayoutKeyUse> keys_of(const PreparedLayout& prepared) {
  std::vector<LayoutKeyUse> keys;
  std::map<std::pair<std::string, std::string>, std::size_t> groups;
  for (const PreparedItem& each : prepared.items()) {
    const ItemValues* values = each.item->values.get();
    const auto* key = values == nullptr ? nullptr : std::get_if<KeyValues>(&values->own);
    if (key == nullptr) continue;
    std::size_t place = keys.size();
    if (values->group) {
      place = groups.try_emplace({key->layout, values->group->text}, place).first->second;
    }
    if (place == keys.size()) keys.push_back({settled_path(key->layout), {}, {}});
    keys[place].items.push_back(each.item->name);
    keys[place].parent_items.push_back(key->item.text);
  }
  return keys;
}

}  // namespace korvex::host
