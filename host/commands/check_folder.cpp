#include <algorithm>
#include <map>
#include <memory>
#include <ostream>

#include "host/commands/check_sets.h"
#include "host/layout/layout_paths.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/signals.h"
#include "host/records/layout_keys.h"
#include "host/text/text_table.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

// Names in a row.
std::string printed(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "" : ", ") + platform::printable(name);
  }
  return list;
}

// A layout of the folder, and what is predicted for it.
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
      const std::vector<LayoutKeyUse> keys = keys_of(*member->prepared);
      for (const UntoldFit& fit : member->prepared->untold()) check_fit(*member, fit);
      for (const UniqueSet& set : sets) check_set(*member, set);
      for (const LayoutKeyUse& key : keys) check_key(*member, key);
      table.add({TextTable::plain(member->name()),
                 TextTable::plain(std::to_string(member->forecast.records())),
                 TextTable::plain(std::to_string(sets.size())),
                 TextTable::plain(std::to_string(keys.size()))});
    }
    table.print(out_);
    for (const std::string& fault : faults_) out_ << fault << "\n";
    out_ << platform::printable(folder)
         << (faults_.empty() ? ": all unique sets hold, and all keys refer to records"
                             : ": not everything is certain")
         << std::endl;
    return faults_.empty();
  }

 private:
  // Those of another layout of the folder are said of that one.
  void check_fit(const Member& member, const UntoldFit& fit) {
    const bool is_own = fit.layout == member.prepared->layout().file;
    if (!is_own && places_.contains(settled_path(fit.layout))) return;
    faults_.push_back((is_own ? member.name() : platform::printable(fit.layout)) + ": fit " +
                      platform::printable(fit.item) + ": " + untold_fit);
  }

  void check_set(const Member& member, const UniqueSet& set) {
    const SetAnswer answer = answer_of(set, member.forecast);
    if (!answer.holds) {
      faults_.push_back(member.name() + ": unique " + set.names + ": " + answer.text);
    }
  }

  // A key leads to a record of the other layout by the way it is made; it leads to one alone where
  // no two of them have the same. Whether they are in the database then is what is asked here.
  void check_key(const Member& member, const LayoutKeyUse& key) {
    const auto place = places_.find(key.parent);
    if (place == places_.end()) {
      faults_.push_back(member.name() + ": key " + printed(key.items) + ": refers to " +
                        platform::printable(key.parent) + ", which is no layout of this folder");
      return;
    }
    const Member& parent = *members_[place->second];
    UniqueSet set;
    set.names = printed(key.parent_items);
    for (const std::string& name : key.parent_items) {
      if (const auto item = parent.prepared->find_item(name)) set.items.push_back(*item);
    }
    const SetAnswer answer = answer_of(set, parent.forecast);
    if (answer.holds) return;
    faults_.push_back(member.name() + ": key " + printed(key.items) + ": refers to " + set.names +
                      " of " + parent.name() + ", where not all differ: " + answer.text);
  }

  std::ostream& out_;
  std::vector<std::unique_ptr<Member>> members_;
  std::map<std::string, std::size_t> places_;  // by their paths
  std::vector<std::string> faults_;
};

}  // namespace

ExitStatus check_folder(const CheckOptions& options, std::ostream& out, std::ostream& messages) {
  if (options.records || !options.unique.empty()) {
    messages << platform::printable(options.layout) << ": is a folder, expected a layout for "
             << (options.records ? "--records" : "--unique") << std::endl;
    return ExitStatus::wrong_usage;
  }
  const auto layouts = layouts_at(options.layout, messages);
  if (!layouts) return ExitStatus::wrong_usage;
  FolderCheck check(out);
  ExitStatus worst = ExitStatus::done;
  for (const std::string& layout : *layouts) {
    auto prepared = std::make_unique<PreparedLayout>();
    const ExitStatus status =
        prepared->prepare(layout, std::nullopt, messages, {.trial = Trial::thorough});
    worst = worst_of(worst, status);
    if (status == ExitStatus::done) check.add(std::move(prepared));
  }
  if (worst != ExitStatus::done) return worst;
  return check.run(options.layout) ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace korvex::host
