#include "dialogs/widgets/code_page_edit.h"

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

TEST_F(CodePageEditTest, AnswersTheBytesThatWereSetAndConvertsWhatWasTyped) {
  const std::tuple<std::string, QString, std::string> cases[] = {
      {"", "", ""},
      {"a\xFFz", "", "a\xFFz"},
      {"lonely \x81", "", "lonely \x81"},
      {"\x81\xE6\x87\x9A", "", "\x81\xE6\x87\x9A"},
      {"", "\u9867\u5BA2", "\x8C\xDA\x8B\x71"},
      {"\x8C\xDA", "Z", "\x8C\xDAZ"},
      {"", "\uFF71", "\xB1"},
      // What input methods here write for the wave dash and the minus sign.
      {"", "\u301C\u2212", "\x81\x60\x81\x7C"},
      {"a\xFF", "b", "a?b"},
  };
  for (const auto& [before, typed, after] : cases) {
    edit_.set_bytes(before);
    if (!typed.isEmpty()) commit(typed);
    EXPECT_EQ(edit_.bytes(), after);
  }
  // While an input method composes, anything may be there.
  edit_.set_bytes("");
  QInputMethodEvent composing(korean, {});
  QApplication::sendEvent(&edit_, &composing);
  commit("\u9867");
  EXPECT_EQ(edit_.text(), "\u9867");
  EXPECT_TRUE(interface_.messages.empty());
}

TEST_F(CodePageEditTest, RefusesACharacterWithoutCodeHoweverItComes) {
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[&] { type(edit_, korean); }, "한"},
      {[&] { paste("x" + korean + "\u0E01"); }, "한"},
      {[&] { commit("\u9867" + korean); }, "한"},
      {[&] { paste("\U0001F600"); }, "😀"},
      {[&] { paste("\uFFFD"); }, "\uFFFD"},  // the mark for what has no meaning
      {[&] {
         QApplication::clipboard()->setText(korean);
         edit_.paste();  // as the context menu does
         QApplication::processEvents();
       },
       "한"},
  };
  for (const auto& [insert, character] : cases) {
    edit_.set_bytes("abcdef");
    edit_.setSelection(1, 3);
    insert();
    EXPECT_EQ(told(), character + " has no code in code page 932.");
    EXPECT_EQ(edit_.text(), "abcdef");
    EXPECT_EQ(edit_.selectedText(), "bcd");
    EXPECT_EQ(edit_.cursorPosition(), 4);
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
  QTest::keyClicks(&edit_, "e");
  EXPECT_EQ(edit_.bytes(), "abcde");
  EXPECT_EQ(interface_.messages.size(), 1u);
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
  // What is there, from where how much is selected, what is pasted and what is there then.
  const std::tuple<const char*, int, int, QString, QString> cases[] = {
      {"", 0, 0, "abcdefg", "abcde"}, {"", 0, 0, "あいう", "あい"},
      {"abc", 1, 0, "あい", "aあbc"}, {"abcd", 4, 0, "あ", "abcd"},
      {"abcde", 5, 0, "f", "abcde"},  {"abcde", 1, 3, "bXYZ", "abXYe"},
      {"xbb", 2, 0, "YbZ", "xbYbb"},  {"", 0, 0, "one\ntwo", "one"},
      {"abc", 0, 0, "\r\nx", "abc"},
  };
  edit_.set_byte_limit(5);
  for (const auto& [before, from, selected, pasted, after] : cases) {
    edit_.set_bytes(before);
    edit_.setSelection(from, selected);
    paste(pasted);
    EXPECT_EQ(edit_.text(), after) << before << " + " << pasted.toStdString();
    while (edit_.isUndoAvailable()) edit_.undo();
    EXPECT_EQ(edit_.text(), before);
  }
  EXPECT_TRUE(interface_.messages.empty());
}

}  // namespace
}  // namespace korvex::test
