#include "host/imports/planned_records.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

namespace korvex::host {

namespace {

const LayoutKey* find_key(const ItemDraft& item, std::string_view name) {
  const auto found = std::find_if(item.values.begin(), item.values.end(),
                                  [&](const LayoutKey& key) { return key.name == name; });
  return found == item.values.end() ? nullptr : &*found;
}

// The layouts that some items need, with no others in them: what is not needed may lead to a table
// that is yet to be planned.
class NeededLayouts {
 public:
  explicit NeededLayouts(const ImportPlan& plan) : plan_(plan) {}

  // False where one is not planned.
  bool add(std::size_t table, const std::string& item) {
    const auto planned = plan_.planned.find(table);
    if (planned == plan_.planned.end()) return false;
    const std::vector<ItemDraft>& items = planned->second.layout.items;
    const auto draft = std::find_if(items.begin(), items.end(),
                                    [&](const ItemDraft& each) { return each.name == item; });
    if (draft == items.end()) return false;
    if (!needed_[table].insert(item).second) return true;
    if (const LayoutKey* const layout = find_key(*draft, "layout")) {
      const auto file = std::find_if(plan_.files.begin(), plan_.files.end(), [&](const auto& each) {
        return !each.empty() && toml_text(each) == layout->value;
      });
      if (file == plan_.files.end()) return false;
      const auto parent = static_cast<std::size_t>(file - plan_.files.begin());
      for (const ColumnSchema& column : plan_.model.tables[parent].schema.columns) {
        const bool is_asked =
            std::any_of(draft->values.begin(), draft->values.end(), [&](const LayoutKey& key) {
              return (key.name == "item" || key.name == "key") &&
                     key.value == toml_text(column.name);
            });
        if (is_asked && !add(parent, column.name)) return false;
      }
    }
    return std::all_of(items.begin(), items.end(), [&](const ItemDraft& other) {
      return !follows(*draft, other) || add(table, other.name);
    });
  }

  std::vector<FileDraft> files() const {
    std::vector<FileDraft> files;
    for (const auto& [table, names] : needed_) {
      const PlannedTable& planned = plan_.planned.at(table);
      LayoutDraft layout = planned.layout;
      layout.unique.clear();
      std::erase_if(layout.items,
                    [&](const ItemDraft& item) { return !names.contains(item.name); });
      std::ostringstream text;
      write_layout(layout, text);
      files.push_back({planned.file, text.str()});
      files.insert(files.end(), planned.lists.begin(), planned.lists.end());
    }
    return files;
  }

 private:
  // Whether an item's values depend on another one of its layout.
  static bool follows(const ItemDraft& item, const ItemDraft& other) {
    const bool leads_out = find_key(item, "layout") != nullptr;
    return std::any_of(item.values.begin(), item.values.end(), [&](const LayoutKey& key) {
      if (key.name == "group" || key.name == "joint") {
        const LayoutKey* const same = find_key(other, key.name);
        return same != nullptr && same->value == key.value;
      }
      if (key.name == "item") return !leads_out && key.value == toml_text(other.name);
      const bool names_items = key.name == "of" || key.name == "within" || key.name == "when" ||
                               key.name == "empty_with";
      if (names_items) return key.value.find(toml_text(other.name)) != std::string::npos;
      return key.name == "text" && key.value.find("{" + other.name) != std::string::npos;
    });
  }

  const ImportPlan& plan_;
  std::map<std::size_t, std::set<std::string>> needed_;  // items by the tables' places
};

}  // namespace

const TextRows& planned_rows(ImportPlan& plan, std::size_t table,
                             const std::vector<std::string>& columns, std::size_t most) {
  const auto [place, is_new] = plan.made.try_emplace({table, columns});
  if (!is_new || !plan.make_records) return place->second;
  NeededLayouts needed(plan);
  const bool is_planned = std::all_of(columns.begin(), columns.end(), [&](const std::string& name) {
    return needed.add(table, name);
  });
  if (!is_planned) return place->second;
  place->second = plan.make_records(
      {needed.files(), plan.files[table], plan.model.tables[table].schema, columns, most});
  return place->second;
}

}  // namespace korvex::host
