#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

#include "platform/file.h"
#include "platform/runtime_class.h"
#include "settings/fmt_com.h"

namespace korvex {

// Run modes: what a call is for.
enum class RunMode : std::int32_t {
  none = 0,
  data_file_dialog = 1,
  settings_only = 2,
  generator = 3,
};
namespace run_mode {
using enum RunMode;
}

// One item's settings in the form in which they are edited.
struct EditedSettings {
  GenerationType generation_type = generation_type::none;
  ItemNumber referenced_item = ItemNumber::none;
  std::int32_t variable_count = 0;  // directives of the last validated format
  RangeChoices choices;
  RangeTexts texts;
};

// The settings file: reads it, holds it against everybody else from a successful load
// until it is saved, deleted or this object ends, changes settings in memory, and writes them back
// through a temporary file. Owns everything that it read.
//
// A failed load or save leaves the settings on disk as they were (a load may have rewritten them in
// the current version). One thread.
class ClFmtFile : public platform::Object {
 public:
  // Where the file is and where its temporary goes, whose name is fixed by the time of this
  // call. Comes before load.
  void set_paths(const std::string& file_path, const std::string& work_folder);

  // Reads the settings of one level, after rewriting a file of the previous version. Answers how
  // many items have settings: 0 when the file or its folder does not exist, and when the file lacks
  // the level or has it empty. -1, -2 (also: locked by another one), -3, -4, -5, -57; -26, -27 when
  // a file of the previous version cannot be rewritten.
  Result<std::size_t> load(SettingsLevel level, StoredRecords records, LayoutKind layout_kind);

  // Begins settings that no file holds yet, with one empty level.
  void begin(SettingsLevel level, StoredRecords records, LayoutKind layout_kind);

  // Writes all levels; the file is then no longer locked. -44 or -6 when nothing is left to write
  // and a file exists or not; -1, -2, -4, -26 (also: a file is there that is not to be written),
  // -27, -68.
  ErrorCode save(Quotation quotation);

  // Deletes the file, locked or not; of a link, its target. A write-protected one stays.
  void delete_file();

  // The user wants the file gone or replaced, write-protected or not.
  void disregard_protection() { is_protection_disregarded_ = true; }

  // Fills the edited copy when the item has settings, and answers whether it has. -68.
  Result<bool> read_item(ItemNumber item_number);

  // Changes of one item. After a failure nothing has changed.
  ErrorCode set_initial_value(ItemNumber item_number, const ItemAttributes& item);
  ErrorCode copy_settings(ItemNumber target, ItemNumber source, const ItemAttributes& item);

  // Makes an item with the initial value take its values from a file, which is not looked at.
  void set_enumeration(ItemNumber item_number, const std::string& path,
                       ExceededAction exceeded_action);
  ErrorCode delete_settings(ItemNumber item_number);

  // Validates and stores texts and choices of the edited copy; an empty end text stands for the
  // largest value that the attribute holds.
  ErrorCode check_and_store(ItemNumber item_number, const ItemAttributes& item);

  // Null without settings. Owned by this object.
  ClFmtColInf* find_column(ItemNumber item_number) const;

  ClFmtLvlInf* current_level() const { return com_.current_level(); }

  // Drops all settings in memory.
  void discard_settings() { com_.discard_levels(); }

  EditedSettings& edited() { return edited_; }
  const EditedSettings& edited() const { return edited_; }

  void set_run_mode(RunMode mode) { run_mode_ = mode; }

  Quotation quotation() const { return quotation_; }

  // After a save in run mode 1: the numbers of all items of the level, in the order in which their
  // settings came into being.
  const std::vector<ItemNumber>& saved_items() const { return saved_items_; }

  bool is_held() const { return held_file_.is_open(); }

 private:
  Result<std::size_t> load_existing(SettingsLevel level, StoredRecords records,
                                    LayoutKind layout_kind);
  ErrorCode save_levels(Quotation quotation);
  ErrorCode nothing_to_save() const;
  ErrorCode write_levels(platform::File& file);
  bool is_protected() const;

  platform::File held_file_;
  std::string file_path_;
  std::string work_folder_;
  std::time_t temporary_moment_ = 0;
  ClFmtCom com_;
  EditedSettings edited_;
  RunMode run_mode_ = run_mode::none;
  Quotation quotation_ = quotation::none;
  bool is_protection_disregarded_ = false;
  std::vector<ItemNumber> saved_items_;
};

inline const platform::RuntimeClass<ClFmtFile> fmt_file_class("ClFmtFile");

}  // namespace korvex
