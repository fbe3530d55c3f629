#include "dialogs/form_dialog.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

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

  using FormDialog::end;
  using FormDialog::radio_choice;
  using FormDialog::set_radio_choice;

  bool is_ready = true;
  bool stays_open = false;
  int oks = 0;
  int cancels = 0;
  int shows = 0;

 protected:
  bool initialise() override { return is_ready; }
  void on_ok() override {
    ++oks;
    if (!stays_open) end(dialog_result::ok);
  }
  void on_cancel() override {
    ++cancels;
    if (!stays_open) end(dialog_result::cancel);
  }
  void showEvent(QShowEvent* event) override {
    ++shows;
    FormDialog::showEvent(event);
  }
};

void click(SampleDialog& dialog, int id) { QTest::mouseClick(dialog.control(id), Qt::LeftButton); }

TEST(FormDialogTest, AnswersHowItEnded) {
  struct Case {
    const char* what;
    std::function<void(SampleDialog&)> act;
    int result;
    int oks;
  };
  const Case cases[] = {
      {"OK", [](SampleDialog& d) { click(d, control_id::ok); }, 1, 1},
      {"Cancel", [](SampleDialog& d) { click(d, control_id::cancel); }, 2, 0},
      {"Escape", [](SampleDialog& d) { QTest::keyClick(&d, Qt::Key_Escape); }, 2, 0},
      {"the close box", [](SampleDialog& d) { d.close(); }, 2, 0},
  };
  for (const Case& c : cases) {
    SampleDialog dialog;
    QTimer::singleShot(0, &dialog, [&] { c.act(dialog); });
    EXPECT_EQ(dialog.run(), c.result) << c.what;
    EXPECT_EQ(dialog.oks, c.oks) << c.what;
    EXPECT_EQ(dialog.cancels, 1 - c.oks) << c.what;
  }
}

TEST(FormDialogTest, OnlyItsOwnDecisionClosesIt) {
  SampleDialog dialog;
  dialog.stays_open = true;
  dialog.show();
  click(dialog, control_id::ok);
  click(dialog, control_id::cancel);
  QTest::keyClick(&dialog, Qt::Key_Escape);
  dialog.close();
  EXPECT_EQ(dialog.oks, 1);
  EXPECT_EQ(dialog.cancels, 3);
  EXPECT_TRUE(dialog.isVisible());
}

TEST(FormDialogTest, IsNeverSeenWhenItCannotBePrepared) {
  SampleDialog dialog;
  dialog.is_ready = false;
  EXPECT_EQ(dialog.run(), 2);
  EXPECT_EQ(dialog.shows, 0);
}

TEST(FormDialogTest, EnterBelongsToTheDefaultButtonWhereverTheFocusIs) {
  SampleDialog dialog;
  dialog.stays_open = true;
  int setups = 0;
  QObject::connect(dialog.control<QPushButton>(control_id::store_format), &QPushButton::clicked,
                   &dialog, [&] { ++setups; });
  dialog.show();
  const int focused[] = {control_id::start, control_id::next_item, control_id::ok};
  for (const int id : focused) {
    dialog.control(id)->setFocus();
    QTest::keyClick(dialog.control(id), Qt::Key_Return);
  }
  EXPECT_EQ(setups, 3);
  EXPECT_EQ(dialog.oks, 0);
}

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
  click(dialog, control_id::exceeded_repeat);
  EXPECT_EQ(choice(), 1);
}

}  // namespace
}  // namespace korvex::test
