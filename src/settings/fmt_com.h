#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/runtime_class.h"
#include "settings/lvl_inf.h"
#include "values/records.h"

namespace korvex {

// One settings file in memory: its header and its levels, which it owns.
class ClFmtCom : public platform::Object {
 public:
  // The level that the run works on; null when there is none.
  ClFmtLvlInf* current_level() const;

  // Makes a level of this number current, as a new file or a file without it gets one.
  void append_level(SettingsLevel level, StoredRecords records);

  void discard_levels();

  FmtHeadRec header = {};
  std::optional<std::size_t> current_index;
  std::vector<char> file_bytes;  // as read; raw levels are views into them
  platform::ObjectList<ClFmtLvlInf> levels;
};

inline const platform::RuntimeClass<ClFmtCom> fmt_com_class("ClFmtCom");

}  // namespace korvex
