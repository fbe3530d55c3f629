#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "platform/file.h"
#include "platform/replacing_file.h"
#include "settings/settings_reader.h"
#include "settings/settings_writer.h"
#include "values/error_codes.h"
#include "values/file_failure.h"
#include "values/record_text.h"
#include "values/records.h"
#include "values/result.h"

namespace korvex {

namespace {

using platform::File;
using platform::FileCause;

// What the records of both versions share.
constexpr std::size_t previous_fields_size = offsetof(FmtColRec, repeat_flag);

template <std::size_t Size>
void clean_field(char (&field)[Size]) {
  std::fill(field + field_text(field).size(), field + Size, '\0');
}

void clean(FmtValRec& value) {
  clean_field(value.low_text);
  clean_field(value.high_text);
}

// Texts keep nothing after their terminators, reserved bytes are zero.
void clean(FmtItemRec& element) {
  for (FmtValRec* value : {&element.current, &element.start, &element.end}) clean(*value);
  clean_field(element.text);
  clean_field(element.start_text);
  clean_field(element.end_text);
  std::memset(element.reserved, 0, sizeof element.reserved);
}

FmtColRec widen(const char* previous) {
  FmtColRec column = {};
  std::memcpy(&column, previous, previous_fields_size);
  clean(column.increment);
  clean_field(column.increment_text);
  clean_field(column.format);
  return column;
}

// Turns the bytes of a file of the previous version into those of the current one.
class Upgrade {
 public:
  explicit Upgrade(std::string_view bytes) : cursor_(bytes, 0) {}

  ErrorCode run() {
    FmtHeadRec header = {};
    if (!cursor_.read(header)) return error::cannot_read;
    FmtHeadRec fresh = {};
    std::memcpy(fresh.magic, current_magic.data(), current_magic.size());
    fresh.layout_kind = header.layout_kind;
    fresh.quotation = header.quotation;
    fresh.level_count = header.level_count;
    append(fresh);
    ErrorCode result = read_level_table(header.level_count);
    for (std::size_t i = 0; i < levels_.size() && result == error::none; ++i) {
      result = copy_columns(levels_[i]);
    }
    if (result != error::none) return result;
    // Places are 32-bit numbers in the file.
    if (bytes_.size() > std::numeric_limits<std::int32_t>::max()) return error::cannot_operate;
    std::copy_n(reinterpret_cast<const char*>(levels_.data()), levels_.size() * sizeof(FmtLvlRec),
                bytes_.data() + sizeof fresh);
    return error::none;
  }

  const std::vector<char>& bytes() const { return bytes_; }

 private:
  template <typename Record>
  void append(const Record& record) {
    const char* begin = reinterpret_cast<const char*>(&record);
    bytes_.insert(bytes_.end(), begin, begin + sizeof record);
  }

  // The table's place is kept free: what is in it is known only after the data areas.
  ErrorCode read_level_table(std::int32_t count) {
    if (!cursor_.holds(count, sizeof(FmtLvlRec))) return error::cannot_read;
    for (std::int32_t i = 0; i < count; ++i) {
      FmtLvlRec level = {};
      cursor_.read(level);
      level.repeat_flag = 0;
      std::memset(level.reserved, 0, sizeof level.reserved);
      levels_.push_back(level);
    }
    bytes_.resize(bytes_.size() + levels_.size() * sizeof(FmtLvlRec));
    return error::none;
  }

  // Copies a level's items. In a file of several levels every area has grown and moved; the only
  // level of a file keeps its place.
  ErrorCode copy_columns(FmtLvlRec& level) {
    if (!cursor_.holds(level.column_count, previous_column_size)) return error::cannot_read;
    const std::size_t begin = bytes_.size();
    for (std::int32_t i = 0; i < level.column_count; ++i) {
      char previous[previous_column_size];
      if (!cursor_.read(previous, sizeof previous)) return error::cannot_read;
      const FmtColRec column = widen(previous);
      append(column);
      if (!cursor_.holds(column.element_count, sizeof(FmtItemRec))) return error::cannot_read;
      for (std::int32_t j = 0; j < column.element_count; ++j) {
        FmtItemRec element = {};
        cursor_.read(element);
        clean(element);
        append(element);
      }
    }
    if (levels_.size() > 1) {
      level.data_offset = static_cast<std::int32_t>(begin);
      level.data_size = static_cast<std::int32_t>(bytes_.size() - begin);
    }
    return error::none;
  }

  RecordCursor cursor_;
  std::vector<char> bytes_;
  std::vector<FmtLvlRec> levels_;
};

// Whether the file is one of the previous version: the header alone tells.
Result<bool> needs_upgrade(File& source, LayoutKind layout_kind) {
  FmtHeadRec header = {};
  std::size_t count = 0;
  if (source.read(&header, sizeof header, count) != FileCause::none || count < sizeof header) {
    return error::cannot_read;
  }
  if (has_magic(header, current_magic)) return false;
  if (!has_magic(header, previous_magic)) return error::version_mismatch;
  if (header.layout_kind != layout_kind) return error::other_system;
  return true;
}

ErrorCode upgrade_into(File& source, File& work) {
  std::uint64_t size = 0;
  std::vector<char> old_bytes;
  if (source.size(size) != FileCause::none || !read_front(source, size, old_bytes)) {
    return error::cannot_read;
  }
  Upgrade upgrade({old_bytes.data(), old_bytes.size()});
  if (const ErrorCode result = upgrade.run(); result != error::none) return result;
  const FileCause cause = work.write(upgrade.bytes().data(), upgrade.bytes().size());
  return cause == FileCause::none ? error::none : write_failure(cause);
}

ErrorCode upgrade(const std::string& path, LayoutKind layout_kind) {
  File source;
  const FileCause opened = source.open_for_reading(path, platform::Sharing::exclusive);
  if (is_missing(opened)) return error::none;
  if (opened != FileCause::none) return error::cannot_open;

  platform::ReplacingFile work;
  if (work.create_as(upgrade_path(path), path, {.is_synchronised = true}) != FileCause::none) {
    return error::cannot_open;
  }
  const Result<bool> is_old = needs_upgrade(source, layout_kind);
  if (!is_old || !*is_old) return is_old.code();
  if (const ErrorCode result = upgrade_into(source, work.file()); result != error::none) {
    return result;
  }
  if (platform::is_write_protected(path)) return error::cannot_write;
  const FileCause cause = work.finish();
  return cause == FileCause::none ? error::none : write_failure(cause);
}

}  // namespace

std::string upgrade_path(const std::string& path) { return path + ".w"; }

ErrorCode upgrade_settings_file(const std::string& path, LayoutKind layout_kind) {
  try {
    return upgrade(path, layout_kind);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

}  // namespace korvex
