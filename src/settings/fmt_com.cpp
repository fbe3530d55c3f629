#include "settings/fmt_com.h"

namespace korvex {

ClFmtLvlInf* ClFmtCom::current_level() const {
  return current_index ? levels[*current_index].get() : nullptr;
}

void ClFmtCom::append_level(SettingsLevel level, StoredRecords records) {
  FmtLvlRec record = {};
  record.level = level;
  record.records = records;
  levels.push_back(std::make_unique<ClFmtLvlInf>(record));
  current_index = levels.size() - 1;
}

void ClFmtCom::discard_levels() {
  levels.clear();
  current_index.reset();
}

}  // namespace korvex
