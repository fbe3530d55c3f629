#include "dialogs/code_page_edit.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTest>
#include <functional>

#include "support/scripted_interface.h"

namespace korvex::test {
namespace {

const QString korean = QStringLiteral("한");

class CodePageEditTest : public testing::Test {
 protected:
  CodePageEditTest() { edit_.show(); }

  void paste(const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(&edit_, Qt::Key_V, Qt::ControlModifier);
  }

  // A keyboard layout may give whole characters.
  static void type(QWidget& target, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
    QApplication::sendEvent(&target, &press);
  }

  void commit(const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&edit_, &event);
  }

  // What the user was told, and that it was said once.
  std::string told() {
    if (interface_.messages.size() != 1) return std::to_string(interface_.messages.size());
    const auto message = interface_.messages.front();
    interface_.messages.clear();
    EXPECT_EQ(message.kind, platform::MessageKind::warning);
    return message.text;
  }

  ScriptedInterface interface_;
  platform::UserInterfaceOverride override_{interface_};
  CodePageEdit edit_;
};

TEST_F(CodePageEditTest, AnswersTheBytesThatWereSet) {
  const std::string texts[] = {
      "", "abc", "\x8C\xDA\x8B\x71", "\x81\xE6\x87\x9A", "a\xFFz", "lonely \x81", "\xB1\xB2",
  };
  for (const std::string& text : texts) {
    edit_.set_bytes(text);
    EXPECT_EQ(edit_.bytes(), text);
  }
}

TEST_F(CodePageEditTest, ConvertsWhatWasTyped) {
  struct Case {
    std::string before;
    QString typed;
    std::string after;
  };
  const Case cases[] = {
      {"", "\u9867\u5BA2", "\x8C\xDA\x8B\x71"},
      {"\x8C\xDA", "A",
       "\x8C\xDA"
       "A"},
      {"", "\uFF71", "\xB1"},
      // What input methods here write for the wave dash and the minus sign.
      {"", "\u301C\u2212", "\x81\x60\x81\x7C"},
      {"a\xFF", "b", "a?b"},
  };
  for (const Case& c : cases) {
    edit_.set_bytes(c.before);
    commit(c.typed);
    EXPECT_EQ(edit_.bytes(), c.after);
  }
  EXPECT_TRUE(interface_.messages.empty());
}

TEST_F(CodePageEditTest, RefusesACharacterWithoutCodeHoweverItComes) {
  struct Case {
    const char* what;
    std::function<void()> insert;
    std::string character;
  };
  const Case cases[] = {
      {"typed", [&] { type(edit_, korean); }, "\xED\x95\x9C"},
      {"pasted among others", [&] { paste("x" + korean + "\u0E01"); }, "\xED\x95\x9C"},
      {"committed", [&] { commit("\u9867" + korean); }, "\xED\x95\x9C"},
      {"beyond the basic plane", [&] { paste("\U0001F600"); }, "\xF0\x9F\x98\x80"},
      {"a mark for what has no meaning", [&] { paste("\uFFFD"); }, "\xEF\xBF\xBD"},
      {"inserted by the context menu",
       [&] {
         QApplication::clipboard()->setText(korean);
         edit_.paste();
         QApplication::processEvents();
       },
       "\xED\x95\x9C"},
  };
  for (const Case& c : cases) {
    edit_.set_bytes("abcdef");
    edit_.setSelection(1, 3);
    c.insert();
    EXPECT_EQ(told(), c.character + " has no code in code page 932.") << c.what;
    EXPECT_EQ(edit_.text(), "abcdef") << c.what;
    EXPECT_EQ(edit_.selectedText(), "bcd") << c.what;
    EXPECT_EQ(edit_.cursorPosition(), 4) << c.what;
  }
}

TEST_F(CodePageEditTest, KeepsWhatWasTypedBeforeARefusalAndItsUndo) {
  QTest::keyClicks(&edit_, "ab");
  paste("cd");
  type(edit_, korean);
  EXPECT_EQ(edit_.text(), "abcd");
  edit_.undo();
  EXPECT_EQ(edit_.text(), "ab");
  edit_.redo();
  EXPECT_EQ(edit_.text(), "abcd");
  QTest::keyClicks(&edit_, "e");
  EXPECT_EQ(edit_.bytes(), "abcde");
  EXPECT_EQ(interface_.messages.size(), 1u);
}

TEST_F(CodePageEditTest, LetsAnInputMethodComposeAnything) {
  QInputMethodEvent composing(korean, {});
  QApplication::sendEvent(&edit_, &composing);
  EXPECT_TRUE(interface_.messages.empty());
  commit("\u9867");
  EXPECT_EQ(edit_.text(), "\u9867");
  EXPECT_TRUE(interface_.messages.empty());
}

TEST_F(CodePageEditTest, EditsAroundBytesWithoutMeaning) {
  edit_.set_bytes("a\xFFz");
  QTest::keyClicks(&edit_, "1");
  EXPECT_EQ(edit_.text(), "a\uFFFDz1");
  QTest::keyClick(&edit_, Qt::Key_Home);
  QTest::keyClick(&edit_, Qt::Key_Delete);
  QTest::keyClick(&edit_, Qt::Key_Delete);
  EXPECT_EQ(edit_.text(), "z1");
  while (edit_.isUndoAvailable()) edit_.undo();
  EXPECT_EQ(edit_.bytes(), "a\xFFz");
  EXPECT_TRUE(interface_.messages.empty());
}

TEST_F(CodePageEditTest, CutsToTheWholeCharactersThatFit) {
  struct Case {
    const char* before;
    int selected_from;
    int selected;
    QString pasted;
    QString after;
  };
  const Case cases[] = {
      {"", 0, 0, "abcdefg", "abcde"},
      {"", 0, 0, "\u3042\u3044\u3046", "\u3042\u3044"},
      {"abc", 1, 0, "\u3042\u3044",
       "a\u3042"
       "bc"},
      {"abcd", 4, 0, "\u3042", "abcd"},
      {"abcde", 5, 0, "f", "abcde"},
      {"abcde", 1, 3, "bXYZ", "abXYe"},
      {"xbb", 2, 0, "YbZ", "xbYbb"},
      {"", 0, 0, "one\ntwo", "one"},
      {"abc", 0, 0, "\r\nx", "abc"},
  };
  edit_.set_byte_limit(5);
  for (const Case& c : cases) {
    edit_.set_bytes(c.before);
    edit_.setSelection(c.selected_from, c.selected);
    paste(c.pasted);
    EXPECT_EQ(edit_.text(), c.after) << c.before << " + " << c.pasted.toStdString();
    while (edit_.isUndoAvailable()) edit_.undo();
    EXPECT_EQ(edit_.text(), c.before);
  }
  EXPECT_TRUE(interface_.messages.empty());
}

}  // namespace
}  // namespace korvex::test
