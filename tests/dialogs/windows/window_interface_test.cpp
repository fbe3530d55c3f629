#include "dialogs/windows/window_interface.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace korvex::test {
namespace {

using platform::Answer;
using platform::MessageKind;

TEST(WindowInterfaceTest, AQuestionWantsAnAnswerAndEveryTextCanBeCopied) {
  struct Case {
    MessageKind kind;
    bool can_be_closed;
    QMessageBox::StandardButton button;
    Answer answer;
  };
  const Case cases[] = {{MessageKind::warning, true, QMessageBox::Ok, Answer::ok},
                        {MessageKind::question, false, QMessageBox::Yes, Answer::yes},
                        {MessageKind::warning_question, false, QMessageBox::No, Answer::no}};
  for (const Case& c : cases) {
    const std::string text = "99104: <b>not</b> for " + std::to_string(static_cast<int>(c.kind));
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier);
      EXPECT_EQ(QApplication::clipboard()->text().toStdString(), text);
      EXPECT_EQ(box->windowFlags().testFlag(Qt::WindowCloseButtonHint), c.can_be_closed);
      if (!c.can_be_closed) {
        QTest::keyClick(box, Qt::Key_Escape);
        EXPECT_FALSE(box->close());
        ASSERT_TRUE(box->isVisible());
      }
      box->button(c.button)->click();
    });
    WindowInterface windows;
    EXPECT_EQ(windows.show_message(c.kind, platform::MessageText::words(text)), c.answer);
  }
}

}  // namespace
}  // namespace korvex::test
