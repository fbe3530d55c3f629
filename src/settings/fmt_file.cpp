#include "settings/fmt_file.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "formatlang/default_settings.h"
#include "platform/replacing_file.h"
#include "settings/settings_reader.h"
#include "settings/settings_writer.h"
#include "values/error_codes.h"
#include "values/file_failure.h"
#include "values/record_text.h"

namespace korvex {

using platform::File;
using platform::FileCause;

namespace {

// Leaves a level without settings out of what is saved, and puts it back when nothing was: whoever
// mends the cause goes on working on it.
class EmptyLevel {
 public:
  explicit EmptyLevel(ClFmtCom& com) : com_(com), index_(*com.current_index) {
    if (com_.current_level()->has_settings()) return;
    level_ = std::move(com_.levels[index_]);
    com_.levels.erase(place());
    com_.current_index.reset();
  }
  ~EmptyLevel() {
    if (level_ == nullptr) return;
    com_.levels.insert(place(), std::move(level_));
    com_.current_index = index_;
  }
  EmptyLevel(const EmptyLevel&) = delete;
  EmptyLevel& operator=(const EmptyLevel&) = delete;

  void forget() { level_.reset(); }

 private:
  platform::ObjectList<ClFmtLvlInf>::iterator place() {
    return com_.levels.begin() + static_cast<std::ptrdiff_t>(index_);
  }

  ClFmtCom& com_;
  std::size_t index_;
  std::unique_ptr<ClFmtLvlInf> level_;
};

}  // namespace

void ClFmtFile::set_paths(const std::string& file_path, const std::string& work_folder) {
  file_path_ = file_path;
  work_folder_ = work_folder;
  temporary_moment_ = std::time(nullptr);
}

Result<std::size_t> ClFmtFile::load(SettingsLevel level, StoredRecords records,
                                    LayoutKind layout_kind) {
  try {
    const ErrorCode upgraded = upgrade_settings_file(file_path_, layout_kind);
    if (upgraded != error::none) return upgraded;
    const FileCause cause = held_file_.open_for_reading(file_path_, platform::Sharing::exclusive);
    if (is_missing(cause)) {
      begin(level, records, layout_kind);
      return 0;
    }
    if (cause != FileCause::none) return error::cannot_open;
    const Result<std::size_t> count = load_existing(level, records, layout_kind);
    if (!count) held_file_.discard();
    return count;
  } catch (const std::bad_alloc&) {
    com_.discard_levels();
    held_file_.discard();
    return error::out_of_memory;
  }
}

void ClFmtFile::begin(SettingsLevel level, StoredRecords records, LayoutKind layout_kind) {
  com_.discard_levels();
  com_.header = {};
  std::memcpy(com_.header.magic, current_magic.data(), current_magic.size());
  com_.header.layout_kind = layout_kind;
  com_.header.level_count = 1;
  com_.append_level(level, records);
  quotation_ = layout_kind == layout_kind::iso ? quotation::double_mark : quotation::none;
}

Result<std::size_t> ClFmtFile::load_existing(SettingsLevel level, StoredRecords records,
                                             LayoutKind layout_kind) {
  const ErrorCode result = read_settings(held_file_, level, records, layout_kind, com_);
  if (result != error::none) return result;
  quotation_ = com_.header.quotation;
  return com_.current_level()->columns.size();
}

ErrorCode ClFmtFile::nothing_to_save() const {
  return platform::exists(file_path_) ? error::all_settings_deleted : error::no_format_for_item;
}

ErrorCode ClFmtFile::save(Quotation quotation) {
  try {
    return save_levels(quotation);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

ErrorCode ClFmtFile::save_levels(Quotation quotation) {
  if (com_.levels.empty()) return nothing_to_save();
  platform::ReplacingFile file;
  if (file.create_in(work_folder_, temporary_moment_, file_path_, {.is_synchronised = true}) !=
      FileCause::none) {
    return error::cannot_open;
  }
  com_.header.quotation = quotation;
  if (com_.current_level() == nullptr) return error::no_current_level;
  EmptyLevel empty_level(com_);
  const ErrorCode result = write_levels(file.file());
  if (result != error::none) return result;
  if (is_protected()) {
    platform::note_file_error(EACCES);
    return error::cannot_write;
  }
  // A file that was missing at the load may have come into being since, and somebody may hold it.
  File late;
  if (!held_file_.is_open() && late.open_for_reading(file_path_, platform::Sharing::exclusive) ==
                                   FileCause::sharing_violation) {
    return error::cannot_write;
  }
  if (const FileCause cause = file.finish(); cause != FileCause::none) return write_failure(cause);
  empty_level.forget();
  held_file_.discard();
  return error::none;
}

ErrorCode ClFmtFile::write_levels(File& file) {
  const ClFmtLvlInf* level = com_.current_level();
  if (com_.levels.empty()) return nothing_to_save();
  try {
    saved_items_.clear();
    if (run_mode_ == run_mode::data_file_dialog && level != nullptr) {
      for (const auto& column : level->columns) saved_items_.push_back(column->record.item_number);
    }
    return write_settings(com_, file);
  } catch (const std::bad_alloc&) {
    return error::out_of_memory;
  }
}

// Replacing and deleting a file asks the system for its folder alone.
bool ClFmtFile::is_protected() const {
  return !is_protection_disregarded_ && platform::is_write_protected(file_path_);
}

void ClFmtFile::delete_file() {
  if (!is_protected()) platform::remove_target(file_path_);
  held_file_.discard();
}

Result<bool> ClFmtFile::read_item(ItemNumber item_number) {
  const ClFmtLvlInf* level = com_.current_level();
  if (level == nullptr) return error::no_current_level;
  const ClFmtColInf* column = level->find_column(item_number);
  if (column == nullptr) return false;

  const FmtColRec& settings = column->record;
  edited_.generation_type = settings.generation_type;
  edited_.referenced_item = settings.referenced_item;
  edited_.choices = {settings.exceeded_action, settings.custom_format};
  edited_.texts.format = field_text(settings.format);
  edited_.texts.increment = field_text(settings.increment_text);
  if (run_mode_ != run_mode::generator) {
    edited_.texts.start = column->joined_start_texts();
    edited_.texts.end = column->joined_end_texts();
  }
  return true;
}

ErrorCode ClFmtFile::set_initial_value(ItemNumber item_number, const ItemAttributes& item) {
  ClFmtLvlInf* level = com_.current_level();
  if (level == nullptr) return error::no_current_level;
  return level->set_initial_value(item_number, item);
}

void ClFmtFile::set_enumeration(ItemNumber item_number, const std::string& path,
                                ExceededAction exceeded_action) {
  FmtColRec& settings = find_column(item_number)->record;
  settings.generation_type = generation_type::enumeration;
  settings.exceeded_action = exceeded_action;
  store_field(settings.enumeration_path, path);
}

ErrorCode ClFmtFile::copy_settings(ItemNumber target, ItemNumber source,
                                   const ItemAttributes& item) {
  ClFmtLvlInf* level = com_.current_level();
  if (level == nullptr) return error::no_current_level;
  return level->copy_settings(target, source, item);
}

ErrorCode ClFmtFile::delete_settings(ItemNumber item_number) {
  ClFmtLvlInf* level = com_.current_level();
  return level == nullptr ? error::no_current_level : level->delete_settings(item_number);
}

ErrorCode ClFmtFile::check_and_store(ItemNumber item_number, const ItemAttributes& item) {
  ClFmtLvlInf* level = com_.current_level();
  if (level == nullptr) return error::no_current_level;
  if (edited_.texts.end.empty()) edited_.texts.end = largest_value_text(item);
  const Result<std::int32_t> variable_count =
      level->check_and_store(item_number, item, edited_.texts, edited_.choices);
  if (variable_count) edited_.variable_count = *variable_count;
  return variable_count.code();
}

ClFmtColInf* ClFmtFile::find_column(ItemNumber item_number) const {
  const ClFmtLvlInf* level = com_.current_level();
  return level == nullptr ? nullptr : level->find_column(item_number);
}

}  // namespace korvex
