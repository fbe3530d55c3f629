#include "settings/settings_writer.h"

#include <limits>

#include "values/error_codes.h"
#include "values/file_failure.h"

namespace korvex {

namespace {

using platform::FileCause;

// Counts the items worth storing and answers how many bytes the level's data area takes.
std::int64_t measure(ClFmtLvlInf& level) {
  if (level.is_raw) return static_cast<std::int64_t>(level.raw_data.size());
  std::size_t bytes = 0;
  level.record.column_count = 0;
  for (const auto& column : level.columns) {
    if (column->elements.empty()) continue;
    ++level.record.column_count;
    bytes += sizeof(FmtColRec) + column->elements.size() * sizeof(FmtItemRec);
  }
  return static_cast<std::int64_t>(bytes);
}

// Gives every level its place, in a row after the level table. Levels that share bytes
// of the file that they come from would make the new one far larger: they have no place.
bool place_levels(ClFmtCom& com) {
  constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
  std::size_t raw_left = com.file_bytes.size();
  auto offset =
      static_cast<std::int64_t>(sizeof(FmtHeadRec) + com.levels.size() * sizeof(FmtLvlRec));
  for (const auto& level : com.levels) {
    const std::int64_t size = measure(*level);
    if (offset + size > limit || level->raw_data.size() > raw_left) return false;
    raw_left -= level->raw_data.size();
    level->record.data_offset = static_cast<std::int32_t>(offset);
    level->record.data_size = static_cast<std::int32_t>(size);
    offset += size;
  }
  return true;
}

FileCause write_columns(const ClFmtLvlInf& level, platform::File& file) {
  for (const auto& column : level.columns) {
    if (column->elements.empty()) continue;
    FileCause cause = file.write(&column->record, sizeof column->record);
    if (cause != FileCause::none) return cause;
    for (const auto& element : column->elements) {
      cause = file.write(&element->record, sizeof element->record);
      if (cause != FileCause::none) return cause;
    }
  }
  return FileCause::none;
}

FileCause write_all(const ClFmtCom& com, platform::File& file) {
  FileCause cause = file.write(&com.header, sizeof com.header);
  for (const auto& level : com.levels) {
    if (cause != FileCause::none) return cause;
    cause = file.write(&level->record, sizeof level->record);
  }
  for (const auto& level : com.levels) {
    if (cause != FileCause::none) return cause;
    cause = level->is_raw ? file.write(level->raw_data.data(), level->raw_data.size())
                          : write_columns(*level, file);
  }
  return cause == FileCause::none ? file.flush() : cause;
}

}  // namespace

ErrorCode write_settings(ClFmtCom& com, platform::File& file) {
  com.header.level_count = static_cast<std::int32_t>(com.levels.size());
  if (!place_levels(com)) return error::cannot_operate;
  const FileCause cause = write_all(com, file);
  return cause == FileCause::none ? error::none : write_failure(cause);
}

}  // namespace korvex
