#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "control/dg_col.h"
#include "control/user_limits.h"
#include "formatlang/default_settings.h"
#include "korvex/control_file.h"
#include "platform/printable_text.h"
#include "platform/runtime_class.h"
#include "settings/fmt_file.h"

namespace korvex {

// Whether an item's digits are impossible in its layout: the item is used, but the user is told.
bool has_invalid_digits(LayoutKind layout_kind, std::int32_t digits, std::int32_t decimals);

// The state of one call: the control file's header and items, the settings that go with them, the
// limits, and what messages say beside their text. Owns all of it. One thread, one run.
class ClColMain : public platform::Object {
 public:
  // Reads the control file at `control_path`: the long form, or in run mode 3 the short form. Also
  // reads the limits and, except in run mode 3, tells the settings file its paths.
  // -1, -2 cannot be opened, -3 truncated. Items with impossible digits do not fail the load:
  // they are reported by load_error() and offending_names().
  ErrorCode load();

  // Writes a control file in the short form into the work folder, for the items that the last save
  // of the settings collected, under a new temporary name, which becomes the control path.
  // -1, -2, -26, -27; nothing is left after a failure.
  ErrorCode write_temporary_control_file();

  void append_error_text(ErrorCode code, std::string& text) const;

  // The texts that the current item's attribute proposes, in `default_texts`; false without.
  bool build_default_settings();

  void set_run_mode(RunMode mode) { run_mode_ = mode; }
  RunMode run_mode() const { return run_mode_; }

  // The first item with the number, of a control file in the long form; null when there is none.
  const ClDGCol* find_item(ItemNumber item_number) const;

  // Makes an item current; null for an index beyond the list.
  ClDGCol* select_item(std::size_t index);
  ClDGCol* current_item() const { return current_item_; }

  // What the control file's header says. The number of records of a value update is the position
  // of its item, from 1.
  StoredRecords records() const { return StoredRecords{header_.records}; }
  SettingsLevel level() const { return SettingsLevel{header_.level}; }
  LayoutKind layout_kind() const { return LayoutKind{header_.layout_kind}; }
  bool is_null_default() const { return header_.null_default == 1; }
  std::string data_path() const;
  std::string settings_path() const;
  std::string work_folder() const;

  // -75 when items had digits that do not fit their layout.
  ErrorCode load_error() const { return load_error_; }
  const std::string& offending_names() const { return offending_names_; }

  const Limits& limits() const { return limits_; }

  std::string control_path;
  ClDGColList items;
  ClFmtFile settings;
  RangeTexts default_texts;
  bool mismatch = false;                   // the settings no longer fitted and were deleted
  platform::MessageText message_context;   // shown beside a message's text
  std::string error_file_path;             // report of bad enumeration lines
  std::uint64_t largest_repeat_count = 0;  // for the message -109

 private:
  ErrorCode load_short(platform::File& file);
  ErrorCode load_long(platform::File& file);
  void append_item(const korvex_control_item& record);
  ErrorCode write_short_form(platform::File& file);

  std::unordered_map<ItemNumber, const ClDGCol*> items_by_number_;
  korvex_control_header header_ = {};
  RunMode run_mode_ = run_mode::none;
  ClDGCol* current_item_ = nullptr;
  ErrorCode load_error_ = error::none;
  std::string offending_names_;
  Limits limits_;
};

inline const platform::RuntimeClass<ClColMain> col_main_class("ClColMain");

}  // namespace korvex
