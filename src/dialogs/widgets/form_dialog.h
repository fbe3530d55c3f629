#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <cassert>
#include <initializer_list>
#include <optional>
#include <span>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "values/records.h"

class QPushButton;

namespace korvex {

class ClItemListCtrl;

// How a dialog ends.
namespace dialog_result {
inline constexpr int ok = 1;
inline constexpr int cancel = 2;
}  // namespace dialog_result

// A dialog made of a form, whose controls are found by their numbers.
//
// A subclass sets up its form in the constructor and then calls index_controls(). Escape, the close
// box and Cancel all end in on_cancel(), OK in on_ok(); nothing closes the window but end().
// Help and F1 open the user's page where it is installed; otherwise the Help button is off.
//
// Enter presses the button that is drawn as the default one: the focused button, else the one that
// belongs to the focused control (enter_presses), else the form's. Ctrl+Enter presses OK from every
// control that is no button.
class FormDialog : public QDialog {
  Q_OBJECT

 public:
  // Prepares the dialog, shows it and answers how it ended: 1 for OK, 2 for Cancel. When preparing
  // fails the window never appears and the answer is 2. It opens as large as the user left it, and
  // never larger than the screen.
  int run();

  // How large the window of a form opens: as the user left it, else as the form likes it.
  static QSize size_as_left(QWidget& form);

  // Makes the window fit into that part of a screen, its frame included.
  void fit_into(const QRect& screen);

  void accept() final {
    carry_out([this] { on_ok(); });
  }
  void reject() final {
    carry_out([this] { on_cancel(); });
  }

  // The control with the number, which must exist.
  QWidget* control(int id) const;

  template <class Widget>
  Widget* control(int id) const {
    static_assert(std::is_base_of_v<QWidget, Widget>);
    auto* widget = qobject_cast<Widget*>(control(id));
    assert(widget != nullptr);
    return widget;
  }

 protected:
  explicit FormDialog(QWidget* parent);

  // Finds the controls of the form, and makes OK and Cancel work.
  void index_controls();

  // Everything that has to be right before the window is seen. Has told the user why when it
  // answers false.
  virtual bool initialise() { return true; }

  // Moves the window, whose size is settled, to its place; otherwise it comes up in the middle of
  // its owner.
  virtual void choose_place(const QRect& /*screen*/) {}

  // The window's size with the frame that the desktop puts around it, which is unknown before it
  // is shown.
  QSize size_with_frame() const;

  virtual void on_ok() { end(dialog_result::ok); }
  virtual void on_cancel() { end(dialog_result::cancel); }

  // Closes the window; run() then answers `result`.
  void end(int result) { done(result); }

  // Runs what a signal asks for. Out of memory ends in a message instead of in the event loop,
  // which exceptions must not cross.
  template <class Command>
  void carry_out(Command command) noexcept {
    try {
      command();
    } catch (...) {
      tell_failure();
    }
  }

  template <class Command>
  void on_click(int id, Command command) {
    connect(button(id), &QAbstractButton::clicked, this, [this, command] { carry_out(command); });
  }

  // While the control has the focus, Enter presses this button instead of the form's default one;
  // no button at all where the control has a use for Enter itself.
  void enter_presses(int control_id, int button_id);
  void enter_presses_nothing(int control_id);

  void enable(int id, bool is_enabled) { control(id)->setEnabled(is_enabled); }
  void enable(std::span<const int> ids, bool is_enabled);
  void enable(std::initializer_list<int> ids, bool is_enabled) {
    enable(std::span(ids.begin(), ids.size()), is_enabled);
  }

  // Gives the focus to the control that is to be worked again, with its text selected; without
  // effect for 0 and for a control that cannot be used.
  void return_to(int id);

  void set_label(int id, const QString& text);

  bool is_checked(int id) const;
  void set_checked(int id, bool is_checked);

  // The two radio buttons for an exceeded end value; nothing when neither is on.
  std::optional<ExceededAction> exceeded_choice() const;
  void set_exceeded_choice(std::optional<ExceededAction> choice);

  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QAbstractButton* button(int id) const;
  static void tell_failure() noexcept;
  void change_default_button(const QObject* focused, bool has_focus);
  void show_read_only_edits();
  void open_as_left();
  void keep_as_left();

  std::unordered_map<int, QWidget*> controls_;
  std::unordered_map<const QObject*, QPushButton*> enter_buttons_;  // null for none
  QPushButton* default_button_ = nullptr;
  ClItemListCtrl* list_ = nullptr;  // if the form has one
  QSize size_at_first_;
  std::vector<int> widths_at_first_;
};

}  // namespace korvex
