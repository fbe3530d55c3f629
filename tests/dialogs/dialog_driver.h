#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <algorithm>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "dialogs/dialog_setup.h"
#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/form_dialog.h"

// Stories with dialogs: what a person does, one step after the other. A step works the dialog in
// front, whichever that is by then, with the mouse and the keyboard alone.
namespace korvex::test {

using Step = std::function<void(FormDialog&)>;
using Steps = std::vector<Step>;

inline void end_all_dialogs() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* dialog = qobject_cast<QDialog*>(window);
    if (dialog != nullptr && dialog->isVisible()) dialog->done(0);
  }
}

// A button that a key pressed comes up, and does its work, a little later.
inline bool is_button_down(const FormDialog& dialog) {
  const auto buttons = dialog.findChildren<QAbstractButton*>();
  return std::any_of(buttons.begin(), buttons.end(), [](auto* button) { return button->isDown(); });
}

// Runs the dialog and plays the story to it; answers how the dialog ended. A story that is not over
// when the dialog ends fails, and so does a dialog that stays open when the story is over. A
// dialog that is never seen takes no step at all.
inline int play(FormDialog& dialog, const Steps& story) {
  constexpr int patience = 20'000;  // milliseconds
  std::deque<Step> left(story.begin(), story.end());
  QObject stage;  // what is still queued goes with it
  QTimer watchdog;
  QObject::connect(&watchdog, &QTimer::timeout, &stage, [&] {
    ADD_FAILURE() << "a dialog is still open, with " << left.size() << " steps to go";
    left.clear();
    end_all_dialogs();
  });
  watchdog.start(patience);
  std::function<void()> next = [&] {
    if (left.empty()) return;
    auto* front = qobject_cast<FormDialog*>(QApplication::activeModalWidget());
    const bool is_ready = front == nullptr || (front->isActiveWindow() && !is_button_down(*front));
    // Queued before the step, which may open a dialog and return when that has ended.
    QTimer::singleShot(is_ready ? 0 : 1, &stage, next);
    if (!is_ready) return front->activateWindow();
    const Step step = left.front();
    left.pop_front();
    if (front != nullptr) return step(*front);
    ADD_FAILURE() << "no dialog is open for step " << story.size() - left.size();
    left.clear();
  };
  QTimer::singleShot(0, &stage, next);
  const int result = dialog.run();
  EXPECT_TRUE(left.empty()) << "ended with " << left.size() << " steps to go";
  return result;
}

inline QWidget* focused(FormDialog& dialog) {
  QWidget* widget = QApplication::focusWidget();
  return widget != nullptr ? widget : &dialog;
}

inline void type_into(QWidget* target, const QString& text) {
  for (const QChar character : text) {
    for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(kind, Qt::Key_unknown, Qt::NoModifier, QString(character));
      QApplication::sendEvent(target, &event);
    }
  }
}

inline QLineEdit* edit_of(const FormDialog& dialog, int id) {
  auto* list = qobject_cast<QComboBox*>(dialog.control(id));
  return list != nullptr ? list->lineEdit() : dialog.control<QLineEdit>(id);
}

// What a reader sees of a tooltip.
inline std::string as_seen(const QString& tooltip) {
  if (!Qt::mightBeRichText(tooltip)) return tooltip.toStdString();
  return QTextDocumentFragment::fromHtml(tooltip).toPlainText().toStdString();
}

inline bool is_usable(const FormDialog& dialog, int id) {
  return dialog.control(id)->isVisible() && dialog.control(id)->isEnabled();
}

inline std::string text_of(const FormDialog& dialog, int id) {
  return edit_of(dialog, id)->text().toStdString();
}

inline std::string cell(const FormDialog& dialog, int id, int row, int column) {
  const QAbstractItemModel* model = dialog.control<QAbstractItemView>(id)->model();
  return model->index(row, column).data().toString().toStdString();
}

inline Step click(int id) {
  return [id](FormDialog& dialog) {
    QWidget* widget = dialog.control(id);
    EXPECT_TRUE(is_usable(dialog, id)) << id;
    // A box answers only where its mark and text are.
    const QPoint near_left(10, widget->height() / 2);
    QTest::mouseClick(widget, Qt::LeftButton, {}, near_left);
  };
}

// Replaces what is in an edit.
inline Step type(int id, const QString& text) {
  return [id, text](FormDialog& dialog) {
    EXPECT_TRUE(is_usable(dialog, id)) << id;
    QLineEdit* edit = edit_of(dialog, id);
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_Delete);
    type_into(edit, text);
  };
}

// Opens a drop-down list and confirms an entry.
inline Step choose(int id, int entry) {
  return [id, entry](FormDialog& dialog) {
    auto* list = dialog.control<QComboBox>(id);
    EXPECT_TRUE(is_usable(dialog, id)) << id;
    QTest::mouseClick(list, Qt::LeftButton);
    QAbstractItemView* entries = list->view();
    entries->setCurrentIndex(entries->model()->index(entry, 0));
    QTest::keyClick(entries, Qt::Key_Return);
  };
}

inline Step row(int id, int row, bool is_double_click = false) {
  return [=](FormDialog& dialog) {
    auto* list = dialog.control<QAbstractItemView>(id);
    const QPoint place = list->visualRect(list->model()->index(row, 0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    if (is_double_click) QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
  };
}

// Keys on whatever has the focus, one after the other: "Alt+S Return", or a text to be typed
// after "=".
inline Step press(const QString& keys) {
  return [keys](FormDialog& dialog) {
    for (const QString& key : keys.split(' ')) {
      if (key.startsWith('=')) {
        type_into(focused(dialog), key.mid(1));
      } else {
        const QKeyCombination pressed = QKeySequence(key)[0];
        QTest::keyClick(focused(dialog), pressed.key(), pressed.keyboardModifiers());
      }
    }
  };
}

// The same, each when the one before has been worked.
inline Steps press_in_turn(const QString& keys) {
  Steps all;
  for (const QString& key : keys.split(' ')) all.push_back(press(key));
  return all;
}

inline Step tab_to(int id) {
  return [id](FormDialog& dialog) {
    constexpr int more_than_controls = 50;
    for (int tabs = 0; tabs < more_than_controls && !dialog.control(id)->hasFocus(); ++tabs) {
      QTest::keyClick(focused(dialog), Qt::Key_Tab);
    }
    EXPECT_TRUE(dialog.control(id)->hasFocus()) << id;
  };
}

inline Step close_box() {
  return [](FormDialog& dialog) { dialog.close(); };
}

// Something that happens meanwhile.
inline Step then(std::function<void()> action) {
  return [action = std::move(action)](FormDialog&) { action(); };
}

inline Step expect_text(int id, const std::string& text) {
  return [=](FormDialog& dialog) { EXPECT_EQ(text_of(dialog, id), text); };
}

// Which of some controls can be used, in their order.
inline Step expect_usable(const std::vector<int>& controls, const std::vector<int>& usable) {
  return [=](FormDialog& dialog) {
    std::vector<int> found = controls;
    std::erase_if(found, [&](int id) { return !is_usable(dialog, id); });
    EXPECT_EQ(found, usable);
  };
}

inline Steps operator+(Steps first, const Steps& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

template <typename... Each>
Steps steps(const Each&... each) {
  return {each...};
}

// Stories with a control file, messages and file choices that are scripted.
class DialogTest : public testing::Test {
 protected:
  Step expect_told(const Names& expected) {
    return then([this, expected] { EXPECT_EQ(setup.told(), expected); });
  }

  Step answer(platform::Answer given) {
    return then([this, given] { setup.interface.answers = {given}; });
  }

  // A value list, which is the next file to be chosen.
  std::string list(const std::string& lines) {
    setup.interface.chosen_file = setup.folder.file("list.txt");
    write_file(*setup.interface.chosen_file, lines);
    return *setup.interface.chosen_file;
  }

  DialogSetup setup;
};

}  // namespace korvex::test
