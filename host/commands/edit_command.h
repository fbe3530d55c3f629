#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace korvex::host {

// The module's functions that show a dialog.
using CreateFile = std::int32_t (*)(const char* control_file_path, void* parent,
                                    std::int32_t quotation_lock);
using ReplaceData = std::int32_t (*)(const char* control_file_path, void* parent);

struct EditOptions {
  std::string layout;
  std::optional<std::int32_t> records;
  std::string item;  // where a value update begins; empty for the first item
};

// Lets the user edit a layout's settings in a dialog; `show` decides whether a data file is
// generated behind it. A settings file that does not exist yet begins with the layout's values.
// Results go to `out`, messages to `messages`; answers the program's exit status.
int run_edit(const EditOptions& options, CreateFile show, std::ostream& out,
             std::ostream& messages);

// The same for one item's settings.
int run_update(const EditOptions& options, ReplaceData show, std::ostream& out,
               std::ostream& messages);

}  // namespace korvex::host
