#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "control/col_main.h"
#include "courses/enum_data_list.h"
#include "generate/repeat_count.h"
#include "generate/repeat_table.h"
#include "host/layout/control_writer.h"
#include "host/layout/layout.h"
#include "host/layout/settings_editor.h"
#include "host/process/scratch_folder.h"

namespace korvex::host {

// An item that stands in the records, with its settings and, for a list, its values.
struct PreparedItem {
  const LayoutItem* item = nullptr;
  const ClFmtColInf* column = nullptr;
  std::unique_ptr<ClEnumDataList> values;
};

// What becomes of texts that would be read as others than their writer meant: who only looks at the
// records is warned, who stores them is stopped.
enum class MisreadTexts { warned, refused };

// A layout made ready for its records, as the generator would, but beside the user's files: it
// works on a copy of the settings file, and leaves nothing behind.
class PreparedLayout {
 public:
  // Reads the layout and checks its values. The program's exit status; all that went wrong is on
  // `messages`. `prediction` receives what the module foretells, where it can.
  int prepare(const std::string& file, std::optional<std::int32_t> records, std::ostream& messages,
              MisreadTexts misread = MisreadTexts::warned,
              std::optional<RepeatCount>* prediction = nullptr);

  // The layout as the user wrote it; its `records` are those asked for.
  const Layout& layout() const { return layout_; }

  // The items of a record in their order, and those that the records lack.
  std::vector<PreparedItem>& items() { return items_; }
  const std::vector<PreparedItem>& items() const { return items_; }
  const std::vector<const LayoutItem*>& left_out() const { return left_out_; }

  // The repeated items of the run, none when it has no repeats.
  RepeatTable& repeats() { return repeats_; }
  bool repeats_are_in_use() const { return !repeats_.is_empty(); }

  // The item's place among the repeats; null without one.
  ClRepeatData* repeat_of(const PreparedItem& item) const {
    const FmtColRec& settings = item.column->record;
    return repeats_are_in_use() && settings.repeat_flag != 0
               ? repeats_.find_level(settings.repeat_level)
               : nullptr;
  }

  // Whether values stand between quotation marks.
  bool quotation() const { return main_.settings.quotation() == 1; }

 private:
  bool refuses_lists(std::ostream& messages);
  int load(std::ostream& messages);
  std::int32_t prepare_items(std::int32_t& bad_line);

  Layout layout_;
  ScratchFolder scratch_;
  Layout copy_;
  TemporaryControlFile control_file_;
  ClColMain main_;
  RepeatTable repeats_;
  std::vector<PreparedItem> items_;
  std::vector<const LayoutItem*> left_out_;
  std::set<std::string> looked_at_;  // lists
};

}  // namespace korvex::host
