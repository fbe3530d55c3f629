#include "host/commands/check_folder.h"

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>

#include "host/commands/check_sets.h"
#include "host/layout/layout_folder.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/prepared_layout.h"
#include "host/text/text_table.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// A key of a layout: items that take those of one record of another.
struct Key {
  std::string parent;  // the path of the other, as it leads there
  std::string names;   // as they are printed
  std::vector<std::string> parent_items;
};

// Items of one group take one record.
std::vector<Key> keys_of(const PreparedLayout& prepared) {
  std::vector<Key> keys;
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
    keys[place].names +=
        (keys[place].names.empty() ? "" : ", ") + platform::printable(each.item->name);
    keys[place].parent_items.push_back(key->item.text);
  }
  return keys;
}

// A layout of the folder, and what is foretold of it.
struct Member {
  explicit Member(std::unique_ptr<PreparedLayout> layout)
      : prepared(std::move(layout)), forecast(*prepared) {}

  std::string name() const {
    const Layout& layout = prepared->layout();
    return platform::printable(layout.table.empty() ? layout.file : layout.table);
  }

  std::unique_ptr<PreparedLayout> prepared;
  Forecast forecast;
};

class FolderCheck {
 public:
  explicit FolderCheck(std::ostream& out) : out_(out) {}

  void add(std::unique_ptr<PreparedLayout> prepared) {
    places_[settled_path(prepared->layout().file)] = members_.size();
    members_.push_back(std::make_unique<Member>(std::move(prepared)));
  }

  // Answers whether all holds.
  bool run(const std::string& folder) {
    TextTable table;
    for (std::size_t column = 1; column < 4; ++column) table.align_right(column);
    table.add({TextTable::plain("Table"), TextTable::plain("Records"),
               TextTable::plain("Unique sets"), TextTable::plain("Keys")});
    for (const auto& member : members_) {
      check_interruption();
      const std::vector<UniqueSet> sets = own_sets(*member->prepared);
      const std::vector<Key> keys = keys_of(*member->prepared);
      for (const UniqueSet& set : sets) check_set(*member, set);
      for (const Key& key : keys) check_key(*member, key);
      table.add({TextTable::plain(member->name()),
                 TextTable::plain(std::to_string(member->forecast.records())),
                 TextTable::plain(std::to_string(sets.size())),
                 TextTable::plain(std::to_string(keys.size()))});
    }
    table.print(out_);
    for (const std::string& fault : faults_) out_ << fault << "\n";
    out_ << platform::printable(folder)
         << (faults_.empty() ? ": all unique sets hold, and all keys lead to records"
                             : ": not everything holds for certain")
         << std::endl;
    return faults_.empty();
  }

 private:
  void check_set(const Member& member, const UniqueSet& set) {
    const SetAnswer answer = answer_of(set, member.forecast);
    if (!answer.holds) {
      faults_.push_back(member.name() + ": unique " + set.names + ": " + answer.text);
    }
  }

  // A key leads to a record of the other layout by the way it is made; it leads to one alone where
  // no two of them have the same. Whether they are in the database then is what is asked here.
  void check_key(const Member& member, const Key& key) {
    const auto place = places_.find(key.parent);
    if (place == places_.end()) {
      faults_.push_back(member.name() + ": key " + key.names + ": leads to " +
                        platform::printable(key.parent) + ", which is no layout of this folder");
      return;
    }
    const Member& parent = *members_[place->second];
    UniqueSet set;
    for (const std::string& name : key.parent_items) {
      set.names += (set.names.empty() ? "" : ", ") + platform::printable(name);
      if (const auto item = parent.prepared->find_item(name)) set.items.push_back(*item);
    }
    const SetAnswer answer = answer_of(set, parent.forecast);
    if (answer.holds) return;
    faults_.push_back(member.name() + ": key " + key.names + ": leads to " + set.names + " of " +
                      parent.name() + ", where not all differ: " + answer.text);
  }

  std::ostream& out_;
  std::vector<std::unique_ptr<Member>> members_;
  std::map<std::string, std::size_t> places_;  // by their paths
  std::vector<std::string> faults_;
};

}  // namespace

int check_folder(const CheckOptions& options, std::ostream& out, std::ostream& messages) {
  if (options.records || !options.unique.empty()) {
    messages << platform::printable(options.layout) << ": is a folder, expected a layout for "
             << (options.records ? "--records" : "--unique") << std::endl;
    return exit_status::wrong_usage;
  }
  const auto layouts = layouts_at(options.layout, messages);
  if (!layouts) return exit_status::wrong_usage;
  FolderCheck check(out);
  int worst = exit_status::done;
  for (const std::string& layout : *layouts) {
    auto prepared = std::make_unique<PreparedLayout>();
    const int status = prepared->prepare(layout, std::nullopt, messages);
    worst = std::max(worst, status);
    if (status == exit_status::done) check.add(std::move(prepared));
  }
  if (worst != exit_status::done) return worst;
  return check.run(options.layout) ? exit_status::done : exit_status::failed;
}

}  // namespace korvex::host
