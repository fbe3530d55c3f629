#include "dialogs/widgets/up_down.h"

#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QTest>
#include <QToolButton>

namespace korvex::test {
namespace {

class UpDownTest : public testing::Test {
 protected:
  UpDownTest() {
    auto* row = new QHBoxLayout(&window_);
    row->addWidget(edit_);
    row->addWidget(stepper_);
    stepper_->set_buddy(edit_);
    stepper_->set_range(-9, 9);
    stepper_->set_subject("it");
    window_.show();
  }

  QString stepped(const QString& text, Qt::Key key) {
    edit_->setText(text);
    QTest::keyClick(edit_, key);
    return edit_->text();
  }

  void click(const QString& arrow) {
    for (QToolButton* button : stepper_->findChildren<QToolButton*>()) {
      if (button->accessibleName() == arrow) QTest::mouseClick(button, Qt::LeftButton);
    }
  }

  QWidget window_;
  QLineEdit* edit_ = new QLineEdit;
  UpDown* stepper_ = new UpDown;
};

TEST_F(UpDownTest, TheArrowKeysStepWithinTheRange) {
  const char* const cases[][3] = {
      // text, after a step up, after a step down
      {"1", "2", "0"},
      {"0", "1", "-1"},
      {"9", "9", "8"},
      {"-9", "-8", "-9"},
      {"100", "100", "9"},
      {"-100", "-9", "-100"},
      {"+3", "4", "2"},
      {"", "1", "-1"},
      {"0.5", "1.5", "-0.5"},
      {"-0.05", "0.95", "-1.05"},
      {"8.50", "9.00", "7.50"},
      {".5", "1.5", "-0.5"},
      {"abc", "abc", "abc"},
      {"1.5.1", "1.5.1", "1.5.1"},
      {"12abc", "12abc", "12abc"},
      {"-", "-", "-"},
      {".", ".", "."},
      {"99999999999999999999", "99999999999999999999", "9"},
      {"-99999999999999999999", "-9", "-99999999999999999999"},
  };
  for (const auto& [text, up, down] : cases) {
    EXPECT_EQ(stepped(text, Qt::Key_Up), up) << text;
    edit_->undo();
    EXPECT_EQ(edit_->text(), text);
    EXPECT_EQ(stepped(text, Qt::Key_Down), down) << text;
  }
}

TEST_F(UpDownTest, TheArrowsStepAndLeaveTheFocusWhereItIs) {
  edit_->setFocus();
  edit_->setText("7");
  click("Increase it");
  EXPECT_EQ(edit_->text(), "8");
  click("Decrease it");
  click("Decrease it");
  EXPECT_EQ(edit_->text(), "6");
  EXPECT_EQ(window_.focusWidget(), edit_);
  stepper_->setEnabled(false);
  click("Increase it");
  EXPECT_EQ(stepped("1", Qt::Key_Up), "1");
}

}  // namespace
}  // namespace korvex::test
