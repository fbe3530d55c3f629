#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/rules/setup_fields.h"
#include "dialogs/widgets/form_dialog.h"
#include "dialogs/windows/preview_note.h"

namespace korvex {

class ClDataGenerationDlg;

// Edits the settings of one item at a time: the current row of the ClDataGenerationDlg that opened
// it, which it moves with Previous and Next. Setup, OK and a Yes to "Save the change?" store what
// the controls hold into the parent's state after all checks; nothing is written to disk. run()
// answers 1 for OK, 2 for Cancel, and what was stored before stays stored either way.
class ClSetupFormatDlg : public FormDialog {
 public:
  // The parent must have a current row and outlive the dialog.
  explicit ClSetupFormatDlg(ClDataGenerationDlg& parent);

  // How large it opens on a screen that has the room.
  static QSize usual_size();

 protected:
  bool initialise() override;
  void choose_place(const QRect& screen) override;
  void on_ok() override;
  void on_cancel() override;

 private:
  void connect_commands();
  void fill_labels();
  void show_item();
  void show_fields();
  void read_controls();
  void apply_enablement();
  std::string preview();

  void confirm_selected_type();
  void select_example();
  void select_file();
  void browse_file();
  void show_enumeration_file();
  void show_enumeration_name();
  void delete_settings();
  void setup();
  void tell_stored();
  void move_by(int rows);

  bool settle_change();
  bool store();
  bool store_initial_value();
  bool store_range_entry();
  void show_stored_action();
  bool store_reference();
  bool store_enumeration();

  struct Refusal {
    ErrorCode code;
    platform::MessageText suffix = {};
    std::uint64_t number = 0;
  };
  bool refuse(const Refusal& refusal, int control_id);

  ClDGCol& item();

  ClDataGenerationDlg& parent_;
  SetupFields fields_;
  PreviewNote note_;
};

}  // namespace korvex
