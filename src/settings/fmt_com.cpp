#include "settings/fmt_com.h"

namespace korvex {

ClFmtLvlInf* ClFmtCom::current_level() const {
  const auto index = static_cast<std::size_t>(current_index);
  return current_index >= 0 && index < levels.size() ? levels[index].get() : nullptr;
}

void ClFmtCom::append_level(std::int32_t level, std::int32_t records) {
  FmtLvlRec record = {};
  record.level = level;
  record.records = records;
  levels.push_back(std::make_unique<ClFmtLvlInf>(record));
  current_index = static_cast<std::int32_t>(levels.size()) - 1;
}

void ClFmtCom::discard_levels() {
  levels.clear();
  current_index = no_level;
}

}  // namespace korvex
