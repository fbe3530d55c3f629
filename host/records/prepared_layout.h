#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "control/col_main.h"
#include "host/engine/control_writer.h"
#include "host/engine/settings_editor.h"
#include "host/layout/layout.h"
#include "host/process/distinct_files.h"
#include "host/process/exit_status.h"
#include "host/process/scratch_folder.h"
#include "host/records/value_trial.h"
#include "host/sources/field.h"
#include "lists/enumeration_check.h"
#include "run/run.h"
#include "settings/col_inf.h"

namespace korvex::host {

// What becomes of texts that would be read as others than their writer meant: who only looks at the
// records is warned, who stores them is stopped.
enum class MisreadTexts { warned, refused };

// An item that is in the records, with its settings; null where its values are the program's
// own.
struct PreparedItem {
  const LayoutItem* item = nullptr;
  const ClFmtColInf* column = nullptr;
  bool is_boolean = false;  // its list has no other values than "true" and "false"
  std::size_t place = 0;    // among all items of the records, as its field has
};

// Whether a number of records that is asked for is that of all, or of the first that are looked at.
enum class RecordsAsked { all, first };

// Where the settings of items that have values in the layout come from.
enum class Settings { of_layout, kept };

// Who is to make the records. The layout must not say what the module does not know, nor ask it for
// more records than it writes into one file.
enum class MadeBy { anyone, module, module_at_once };

struct Preparation {
  MisreadTexts misread = MisreadTexts::warned;
  Settings settings = Settings::of_layout;
  MadeBy made_by = MadeBy::anyone;
  RecordsAsked asked = RecordsAsked::all;
  Trial trial = Trial::begin;
  // Is handed the copy with the settings that it has now, and ends the preparation with its status.
  std::function<ExitStatus(const Layout& copy, const SettingsResult& settings)> look_at_settings =
      {};
};

// A layout made ready for its records, as the generator would, but beside the user's files: it
// works on a copy of the settings file, and leaves no files.
class PreparedLayout {
 public:
  // Reads the layout and checks its values. The program's exit status; all that went wrong is on
  // `messages`.
  ExitStatus prepare(const std::string& file, std::optional<RecordCount> records,
                     std::ostream& messages, const Preparation& how = {});

  // The same for a layout that the items of another lead to, up to its fields.
  ExitStatus prepare_member(const std::string& file, std::ostream& messages, MisreadTexts misread);

  // The same for a second copy of a layout that is prepared so far.
  ExitStatus prepare_copy(const PreparedLayout& other, std::ostream& messages,
                          MisreadTexts misread);

  // The same for another copy of a layout that is prepared to the end, for a thread of its own. The
  // other must outlive it, and not be in use meanwhile. False when it can't be had.
  bool prepare_like(const PreparedLayout& other);

  // What a layout has in the end: fields, which ask those of other layouts.
  void take_fields(std::vector<std::unique_ptr<sources::Field>> fields,
                   std::vector<std::unique_ptr<PreparedLayout>> relatives,
                   std::vector<UntoldFit> untold_fits);

  // What the module would say of a failure in making its records.
  std::string message_of(ErrorCode code) const;

  // The layout as the user wrote it; its `records` are those asked for.
  const Layout& layout() const { return layout_; }

  // Adds all files that the records come from.
  void add_read_files(DistinctFiles& files) const;

  // The items of a record in their order, and those that the records lack. Some only help others:
  // the rest are written.
  const std::vector<PreparedItem>& items() const { return items_; }
  const std::vector<PreparedItem>& written() const { return written_; }
  const std::vector<const LayoutItem*>& left_out() const { return left_out_; }

  // The place of the item with that name among them.
  std::optional<std::size_t> find_item(std::string_view name) const;

  // Whether the engine makes the records as a whole, as generating does.
  bool is_plain() const { return fields_.empty(); }

  // The records of a plain layout, whose fields go side by side with the items.
  Run& run() { return run_; }
  const Run& run() const { return run_; }

  // The fields of any other, side by side with the items.
  const std::vector<std::unique_ptr<sources::Field>>& fields() const { return fields_; }

  // The items, of this layout and of those that its keys lead to, of which a thorough trial could
  // not tell whether all values fit.
  const std::vector<UntoldFit>& untold() const { return untold_; }

  // The layouts that its keys lead to, to any depth.
  const std::vector<std::unique_ptr<PreparedLayout>>& relatives() const { return relatives_; }

 private:
  ExitStatus read(const std::string& file, std::optional<RecordCount> records,
                  std::ostream& messages, const Preparation& how);
  bool refuses_lists(std::ostream& messages);
  ExitStatus load(std::ostream& messages);
  ErrorCode load_list(const FmtColRec& settings, ClEnumDataList& values, ListLine& bad_line);
  void match_items();
  ExitStatus prepare_records(std::ostream& messages, const Preparation& how);

  Layout layout_;
  ScratchFolder scratch_;
  Layout copy_;
  TemporaryControlFile control_file_;
  ClColMain main_;
  Run run_;
  std::vector<bool> from_engine_;  // side by side with the layout's items
  std::vector<PreparedItem> items_;
  std::vector<PreparedItem> written_;
  std::vector<const LayoutItem*> left_out_;
  std::set<std::string> looked_at_;  // lists
  std::set<ItemNumber> booleans_;    // the numbers of items
  std::vector<std::unique_ptr<PreparedLayout>> relatives_;
  std::vector<UntoldFit> untold_;
  std::vector<std::unique_ptr<sources::Field>> fields_;  // they refer to all of the above
};

}  // namespace korvex::host
