#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "control/col_main.h"
#include "dialogs/rules/messages.h"
#include "dialogs/rules/row_rules.h"
#include "dialogs/rules/value_lists.h"
#include "dialogs/widgets/form_dialog.h"
#include "dialogs/widgets/item_list_model.h"

namespace korvex {

class ClItemListCtrl;

// The main dialog: lists all items with their settings, opens ClSetupFormatDlg for one of them, and
// attaches repeats. Owns the state of the call. Changes take effect in memory at once; only OK
// writes files: the settings and, in run mode 1, the data file. Nothing is written when it ends
// otherwise.
class ClDataGenerationDlg : public FormDialog {
 public:
  // OK generates a data file, or with run_mode::settings_only nothing but the settings. The lock
  // fixes the choice of quotation marks to none. run() answers 1 for OK, 2 for Cancel.
  ClDataGenerationDlg(QWidget* parent, const std::string& control_path, RunMode run_mode,
                      bool is_quotation_locked);
  ~ClDataGenerationDlg() override;

  ClColMain& main() { return main_; }
  const Messages& messages() const { return messages_; }

  // -1 until a row is selected, as in an empty list.
  int current_row() const { return current_row_; }

  // Makes its item the one that operations on the settings go to.
  void select_current_item() { main_.select_item(static_cast<std::size_t>(current_row_)); }

  // Selects a row and brings it into view; -1 changes nothing.
  void move_to_row(int row);

  // Shows the current row's item as it is now, and selects the row again.
  void mark_current_row();

  // Deletes the settings and the repeat of the current row's item, if there is a row.
  void delete_current_settings();

 protected:
  bool initialise() override;
  void choose_place(const QRect& screen) override;
  void on_ok() override;
  void on_cancel() override;

 private:
  void connect_commands();
  bool load();
  void show_load_warning();
  void fill_list();
  void choose_quotation();

  void open_setup();
  void click_repeats(bool is_ticked);
  void update_repeat();
  void select_row(int row);

  ClDGCol& current_item();
  void apply_row_rules(const std::optional<RowRules>& rules);
  void enable_repeat_numbers(bool on);
  void show_repeat_fields();
  bool read_repeat_fields();
  void refresh_counts();

  void save();
  void generate();
  ErrorCode generate_from(const std::string& control_path);

  ClColMain main_;
  Messages messages_;
  EnumerationCounts enumeration_counts_;
  std::unique_ptr<ItemListModel> model_;  // once the items are known
  ClItemListCtrl* list_;
  bool is_quotation_locked_;
  int current_row_ = -1;
  RepeatFields repeat_;
  std::uint32_t highest_level_ = 0;
  bool counts_repeats_only_ = true;
};

}  // namespace korvex
