#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/rules/format_examples.h"
#include "dialogs/rules/messages.h"
#include "dialogs/widgets/form_dialog.h"
#include "dialogs/windows/example_list.h"

namespace korvex {

// Picks a format from the examples, and adds to and deletes from the user's own, which OK writes to
// the settings store. run() answers 1 for OK, after which format() is the choice, or 2 for Cancel,
// after which nothing was written.
class ClSelectFormatExampleDlg : public FormDialog {
 public:
  // `format` is shown first. The messages must outlive the dialog.
  ClSelectFormatExampleDlg(QWidget* parent, const Messages& messages, std::string format);

  const std::string& format() const { return format_; }

 protected:
  bool initialise() override;
  void on_ok() override;
  void on_cancel() override;

 private:
  void add_example();
  void refuse(platform::MessageKind kind, ErrorCode code, std::string_view hint = {});
  void delete_example();
  void take_selected();
  void show_format(const std::string& format);
  void apply_button_rule();

  const Messages& messages_;
  std::string format_;
  FormatExamples examples_;
  ExampleList list_;
  bool is_changed_ = false;
};

}  // namespace korvex
