#pragma once

#include <string>

#include "settings/fmt_file.h"
#include "support/settings_bytes.h"
#include "support/temp_folder.h"

namespace korvex::test {

// A folder for the settings file and one for its temporaries.
struct SettingsFolder {
  TempFolder home;
  TempFolder work;
  std::string path = home.file("settings.fif");

  Result<std::size_t> load(ClFmtFile& file, std::int32_t level = 1, std::int32_t records = 1000,
                           std::int32_t layout_kind = 1) const {
    file.set_paths(path, work.path());
    return file.load(SettingsLevel{level}, StoredRecords{records}, LayoutKind{layout_kind});
  }

  // Nothing but the settings file itself, or not even that.
  bool is_tidy() const { return work.names().empty() && home.names().size() <= 1; }
};

// Gives an item an unsigned range of five digits.
inline ErrorCode store_range(ClFmtFile& file, std::int32_t item, const std::string& start = "1",
                             const std::string& end = "99999") {
  file.edited().texts = {"%5U", start, end, "1"};
  return file.check_and_store(ItemNumber{item}, {attribute::decimal, Flag::off, 5, 5, 0});
}

}  // namespace korvex::test
