#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <cassert>
#include <initializer_list>
#include <span>
#include <type_traits>
#include <unordered_map>

namespace korvex {

// How a dialog ends.
namespace dialog_result {
inline constexpr int ok = 1;
inline constexpr int cancel = 2;
}  // namespace dialog_result

// A dialog made of a form, whose controls are found by their numbers.
//
// A subclass sets up its form in the constructor and then calls index_controls(). Escape, the close
// box and Cancel all end in on_cancel(), the default answer of the keyboard and OK in on_ok();
// nothing closes the window but end(). No help is offered: the Help button is off and F1 does
// nothing.
class FormDialog : public QDialog {
  Q_OBJECT

 public:
  // Prepares the dialog, shows it and answers how it ended: 1 for OK, 2 for Cancel. When preparing
  // fails the window never appears and the answer is 2.
  int run();

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

  void enable(int id, bool is_enabled) { control(id)->setEnabled(is_enabled); }
  void enable(std::span<const int> ids, bool is_enabled);
  void enable(std::initializer_list<int> ids, bool is_enabled) {
    enable(std::span(ids.begin(), ids.size()), is_enabled);
  }

  void set_label(int id, const QString& text);

  bool is_checked(int id) const;
  void set_checked(int id, bool is_checked);

  // Which of two radio buttons is on: 0 the first, 1 the second, -1 neither.
  int radio_choice(int first_id, int second_id) const;
  void set_radio_choice(int first_id, int second_id, int choice);

  void keyPressEvent(QKeyEvent* event) override;

 private:
  QAbstractButton* button(int id) const;
  static void tell_failure() noexcept;

  std::unordered_map<int, QWidget*> controls_;
};

}  // namespace korvex
