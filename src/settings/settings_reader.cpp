#include "settings/settings_reader.h"

#include <algorithm>
#include <cstring>

#include "values/error_codes.h"

namespace korvex {

namespace {

// Header and level table; the level `level` becomes current.
ErrorCode read_tables(platform::File& file, SettingsLevel level, StoredRecords records,
                      LayoutKind layout_kind, ClFmtCom& com) {
  std::uint64_t size = 0;
  std::size_t count = 0;
  if (file.size(size) != platform::FileCause::none ||
      file.read(&com.header, sizeof com.header, count) != platform::FileCause::none ||
      count < sizeof com.header) {
    return error::cannot_read;
  }
  if (!has_magic(com.header, current_magic)) return error::version_mismatch;
  if (com.header.layout_kind != layout_kind) return error::other_system;

  const std::int64_t level_count = com.header.level_count;
  const auto room = static_cast<std::int64_t>((size - sizeof com.header) / sizeof(FmtLvlRec));
  if (size < sizeof com.header || level_count < 0 || level_count > room) return error::cannot_read;
  for (std::int32_t i = 0; i < level_count; ++i) {
    FmtLvlRec record = {};
    if (file.read(&record, sizeof record, count) != platform::FileCause::none ||
        count < sizeof record) {
      return error::cannot_read;
    }
    const bool is_wanted = record.level == level;
    if (is_wanted) record.records = records;
    com.levels.push_back(std::make_unique<ClFmtLvlInf>(record));
    if (is_wanted) com.current_index = com.levels.size() - 1;
  }
  if (!com.current_index) com.append_level(level, records);
  return error::none;
}

// Where the items of a level end, by their own counts; where the first one begins whose count
// cannot be true.
std::uint64_t end_of_columns(platform::File& file, std::uint64_t size, const FmtLvlRec& level) {
  auto end = static_cast<std::uint64_t>(std::max(level.data_offset, 0));
  for (std::int32_t i = 0; i < level.column_count; ++i) {
    FmtColRec column;
    std::size_t count = 0;
    if (file.seek(end) != platform::FileCause::none ||
        file.read(&column, sizeof column, count) != platform::FileCause::none) {
      return end;
    }
    const auto elements = static_cast<std::uint64_t>(std::max(column.element_count, 0));
    if (count < sizeof column || elements > (size - end - count) / sizeof(FmtItemRec)) return end;
    end += count + elements * sizeof(FmtItemRec);
  }
  return end;
}

// How far into the file its levels reach: what follows is never read.
std::uint64_t end_of_levels(platform::File& file, const ClFmtCom& com) {
  std::uint64_t size = 0;
  if (file.size(size) != platform::FileCause::none) return 0;
  const bool may_be_stale = com.header.level_count == 1;
  std::uint64_t end = sizeof(FmtHeadRec) + com.levels.size() * sizeof(FmtLvlRec);
  for (const auto& level : com.levels) {
    const FmtLvlRec& record = level->record;
    const bool is_walked = level.get() == com.current_level() || may_be_stale;
    const auto raw_end = static_cast<std::uint64_t>(
        std::max<std::int64_t>(std::int64_t{record.data_offset} + record.data_size, 0));
    if (level.get() != com.current_level()) end = std::max(end, raw_end);
    if (is_walked) end = std::max(end, end_of_columns(file, size, record));
  }
  return std::min(end, size);
}

ErrorCode read_columns(RecordCursor cursor, ClFmtLvlInf& level) {
  const std::int32_t column_count = level.record.column_count;
  if (!cursor.holds(column_count, sizeof(FmtColRec))) return error::cannot_read;
  for (std::int32_t i = 0; i < column_count; ++i) {
    auto column = std::make_unique<ClFmtColInf>();
    if (!cursor.read(column->record)) return error::cannot_read;
    const std::int32_t element_count = column->record.element_count;
    if (!cursor.holds(element_count, sizeof(FmtItemRec))) return error::cannot_read;
    for (std::int32_t j = 0; j < element_count; ++j) {
      auto element = std::make_unique<ClFmtItemInf>();
      cursor.read(element->record);
      column->elements.push_back(std::move(element));
    }
    level.append(std::move(column));
  }
  return error::none;
}

// How many bytes the items of a level take, by their own counts; -1 when they do not fit the file.
std::int64_t measure_columns(RecordCursor cursor, std::int32_t column_count) {
  if (!cursor.holds(column_count, sizeof(FmtColRec))) return -1;
  std::int64_t size = 0;
  for (std::int32_t i = 0; i < column_count; ++i) {
    FmtColRec column;
    if (!cursor.read(column) || !cursor.holds(column.element_count, sizeof(FmtItemRec))) return -1;
    const std::int64_t elements = std::int64_t{sizeof(FmtItemRec)} * column.element_count;
    cursor.skip(static_cast<std::size_t>(elements));
    size += std::int64_t{sizeof(FmtColRec)} + elements;
  }
  return size;
}

// The only level of a file of the previous version keeps its recorded size through the upgrade,
// although its items have grown. Taken by that size, it would lose its end; it is told by the
// difference, and taken as large as it is.
void correct_upgraded_size(std::string_view bytes, FmtLvlRec& level) {
  const std::int64_t size =
      measure_columns({bytes, static_cast<std::size_t>(level.data_offset)}, level.column_count);
  const std::int64_t growth = std::int64_t{sizeof(FmtColRec) - previous_column_size};
  if (size > 0 && level.data_size == size - growth * level.column_count) {
    level.data_size = static_cast<std::int32_t>(size);
  }
}

ErrorCode take_raw(std::string_view bytes, ClFmtLvlInf& level) {
  const auto offset = static_cast<std::size_t>(level.record.data_offset);
  if (!RecordCursor(bytes, offset).holds(level.record.data_size, 1)) return error::cannot_read;
  level.is_raw = true;
  level.raw_data = level.record.data_size == 0
                       ? std::string_view()
                       : bytes.substr(offset, static_cast<std::size_t>(level.record.data_size));
  return error::none;
}

ErrorCode read_areas(ClFmtCom& com) {
  const std::string_view bytes(com.file_bytes.data(), com.file_bytes.size());
  const std::int64_t tables_end =
      std::int64_t{sizeof(FmtHeadRec)} + std::int64_t{sizeof(FmtLvlRec)} * com.header.level_count;
  for (const auto& level : com.levels) {
    const std::int32_t offset = level->record.data_offset;
    if (offset == 0) break;
    if (offset < tables_end) return error::cannot_operate;
    const bool is_current = level.get() == com.current_level();
    if (!is_current && com.header.level_count == 1) correct_upgraded_size(bytes, level->record);
    const ErrorCode result = is_current
                                 ? read_columns({bytes, static_cast<std::size_t>(offset)}, *level)
                                 : take_raw(bytes, *level);
    if (result != error::none) return result;
  }
  return error::none;
}

}  // namespace

bool has_magic(const FmtHeadRec& header, std::string_view magic) {
  char expected[magic_size] = {};
  std::memcpy(expected, magic.data(), magic.size());
  return std::memcmp(header.magic, expected, magic_size) == 0;
}

bool RecordCursor::holds(std::int64_t count, std::size_t record_size) const {
  return count >= 0 && static_cast<std::uint64_t>(count) <= remaining() / record_size;
}

bool RecordCursor::read(void* record, std::size_t size) {
  if (size > remaining()) return false;
  std::memcpy(record, bytes_.data() + offset_, size);
  offset_ += size;
  return true;
}

bool read_front(platform::File& file, std::uint64_t size, std::vector<char>& bytes) {
  if (file.seek(0) != platform::FileCause::none) return false;
  bytes.resize(size);
  std::size_t count = 0;
  if (file.read(bytes.data(), bytes.size(), count) != platform::FileCause::none) return false;
  bytes.resize(count);
  return true;
}

ErrorCode read_settings(platform::File& file, SettingsLevel level, StoredRecords records,
                        LayoutKind layout_kind, ClFmtCom& com) {
  com.discard_levels();
  ErrorCode result = read_tables(file, level, records, layout_kind, com);
  if (result == error::none) {
    const std::uint64_t end = end_of_levels(file, com);
    result = read_front(file, end, com.file_bytes) ? read_areas(com) : error::cannot_read;
  }
  if (result != error::none) com.discard_levels();
  return result;
}

}  // namespace korvex
