#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/col_main.h"
#include "dialogs/rules/format_examples.h"
#include "dialogs/rules/messages.h"
#include "dialogs/widgets/form_dialog.h"
#include "dialogs/windows/example_list.h"
#include "dialogs/windows/preview_note.h"

namespace korvex {

// Sets one item, chosen by its name, to the initial value or to a range. Owns the state of the
// call. Only OK writes: the user's format examples and the settings file, in which all other items
// keep what they have. run() answers 1 for OK, 2 for Cancel.
class ClItemValueUpdateDlg : public FormDialog {
 public:
  ClItemValueUpdateDlg(QWidget* parent, const std::string& control_path);

 protected:
  bool initialise() override;
  void on_ok() override;

 private:
  void connect_commands();
  bool load();
  void fill_labels();
  void show_item(std::size_t position);
  std::size_t start_position() const;

  void select_type(int entry);
  void propose_range(const ClDGCol& item);
  void add_example();
  void delete_example();
  void browse_items();

  void explain_named_item();
  // The first item with the name in the control, null without one.
  const ClDGCol* named_item() const;
  // Its place; tells the user when there is none.
  std::optional<std::size_t> named_position();
  void enable_range(bool on);
  void enable_custom_format(bool on);

  std::string preview();

  bool store();
  bool store_range_entry();
  void save_examples();
  bool refuse(ErrorCode code, std::string_view hint, int control_id);

  ClColMain main_;
  Messages messages_;
  FormatExamples examples_;
  ExampleList list_;
  bool has_deleted_examples_ = false;
  PreviewNote note_;
};

}  // namespace korvex
