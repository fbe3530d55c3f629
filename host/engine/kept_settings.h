#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "host/engine/settings_editor.h"
#include "host/layout/layout.h"
#include "settings/fmt_file.h"

// What a settings file holds already. The module deletes one that no longer fits the items; the
// program looks before it calls it.
namespace korvex::host {

// Whose settings a run takes from the settings file.
enum class Keeping {
  items_without_values,
  all_items,
  whole_level,  // also items that the layout no longer has: a window generates them, too
};

// The items that keep settings made for another attribute or number of digits.
std::vector<const LayoutItem*> find_unfit_items(const Layout& layout, const ClFmtFile& file,
                                                Keeping keeping);

// Items that repeat at a level that another one has, too. What the layout alone says is checked
// when it is read; here the items count that keep what the file holds.
std::vector<ItemFailure> find_shared_levels(const Layout& layout, const ClFmtFile& file);

struct KeptSettings {
  SettingsResult refused;          // what the module would not take, by the names of the items
  std::vector<std::string> lists;  // value lists of the items that keep their settings
};

// Looks at a copy of the settings file, which itself stays as it is. A file that
// cannot be read is left to the module. Nothing, and a message, when there can be no copy.
std::optional<KeptSettings> look_at_settings(const Layout& layout, Keeping keeping,
                                             std::ostream& messages);

// Gives the settings file another name, which it puts into `name`: its own with ".1" after it, or
// the first number that is free. Empty, or what went wrong.
std::string move_settings_aside(const Layout& layout, std::string& name);

}  // namespace korvex::host
