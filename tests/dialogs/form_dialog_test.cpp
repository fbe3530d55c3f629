#include "dialogs/form_dialog.h"

#include <gtest/gtest.h>

#include <QTest>

#include "dialogs/control_ids.h"
#include "ui_ClSetupFormatDlg.h"

namespace korvex::test {
namespace {

class SampleDialog : public FormDialog {
 public:
  SampleDialog() : FormDialog(nullptr) {
    Ui::ClSetupFormatDlg form;
    form.setupUi(this);
    index_controls();
  }

  using FormDialog::radio_choice;
  using FormDialog::set_radio_choice;

 protected:
  bool initialise() override { return true; }
  void on_ok() override {}
  void on_cancel() override {}
};

TEST(FormDialogTest, ARadioGroupMayHaveNoChoice) {
  SampleDialog dialog;
  const auto choice = [&] {
    return dialog.radio_choice(control_id::exceeded_initialize, control_id::exceeded_repeat);
  };
  EXPECT_EQ(choice(), -1);
  for (const int wanted : {0, 1, -1, 1, 0, -1}) {
    dialog.set_radio_choice(control_id::exceeded_initialize, control_id::exceeded_repeat, wanted);
    EXPECT_EQ(choice(), wanted);
  }
  dialog.set_radio_choice(control_id::exceeded_initialize, control_id::exceeded_repeat, 0);
  dialog.show();
  QTest::mouseClick(dialog.control(control_id::exceeded_repeat), Qt::LeftButton);
  EXPECT_EQ(choice(), 1);
}

}  // namespace
}  // namespace korvex::test
