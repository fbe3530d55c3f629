#include "host/layout/run_files.h"

#include <set>

#include "lists/enumeration_check.h"
#include "platform/path.h"
#include "platform/printable_text.h"
#include "platform/settings_store.h"
#include "run/log_file.h"
#include "settings/settings_writer.h"

namespace korvex::host {

namespace {

// A value list, and what names it.
struct List {
  std::string path;
  SourcePlace place;
  std::string role;
};

std::vector<List> lists_of(const Layout& layout, const std::vector<std::string>& kept_lists) {
  std::vector<List> lists;
  std::set<std::string> known;
  for (const LayoutItem& item : layout.items) {
    if (!item.values || item.values->file.empty() || !known.insert(item.values->file).second) {
      continue;
    }
    lists.push_back({item.values->file, item.values->origin,
                     "the value list of item " + platform::printable(item.name)});
  }
  for (const std::string& path : kept_lists) {
    if (known.insert(path).second) {
      lists.push_back({path, layout.settings_place, "a value list that the settings file names"});
    }
  }
  return lists;
}

// What values beyond the module's come from, which leaves no reports.
void add_own_files(const Layout& layout, DistinctFiles& files) {
  for (const LayoutItem& item : layout.items) {
    if (!item.values) continue;
    const std::string owner = "item " + platform::printable(item.name);
    if (const auto* list = std::get_if<ListValues>(&item.values->own)) {
      if (!list->file.empty()) files.read(list->file, "the value list of " + owner);
    } else if (const auto* key = std::get_if<KeyValues>(&item.values->own)) {
      if (!key->layout.empty()) files.read(key->layout, "the layout that " + owner + " points to");
    }
  }
}

void add_lists(const std::vector<List>& lists, DistinctFiles& files) {
  for (const List& list : lists) files.read(list.path, list.role);
}

}  // namespace

void add_read_files(const Layout& layout, const std::vector<std::string>& kept_lists,
                    DistinctFiles& files) {
  files.read(layout.file, "the layout");
  add_own_files(layout, files);
  add_lists(lists_of(layout, kept_lists), files);
}

std::vector<LayoutError> find_file_conflicts(const Layout& layout,
                                             const std::vector<std::string>& kept_lists) {
  DistinctFiles files;
  const std::string store = platform::SettingsStore(platform::host_key()).path();
  if (!store.empty()) files.read(store, "the settings store");
  files.read(layout.file, "the layout");
  add_own_files(layout, files);
  const std::vector<List> lists = lists_of(layout, kept_lists);
  add_lists(lists, files);
  std::vector<LayoutError> errors;
  // One list under two names has one error file.
  const auto check = [&](const std::optional<std::string>& other, const std::string& path,
                         const std::string& role, SourcePlace place) {
    if (!other || *other == role) return;
    errors.push_back({place, role + " " + platform::printable(path) + " is also " + *other +
                                 ", expected a file of its own"});
  };
  const auto write = [&](const std::string& path, const std::string& role, SourcePlace place) {
    check(files.write(path, role), path, role, place);
  };
  const auto replace = [&](const std::string& path, const std::string& role, SourcePlace place) {
    check(files.replace(path, role), path, role, place);
  };
  write(layout.settings, "the settings file", layout.settings_place);
  replace(upgrade_path(layout.settings), "the settings file's temporary file",
          layout.settings_place);
  write(layout.data, "the data file", layout.data_place);
  replace(log_path(layout.work, layout.data), "the log file", layout.data_place);
  for (const List& list : lists) {
    replace(error_file_path(list.path), "the error file", list.place);
  }
  return errors;
}

}  // namespace korvex::host
