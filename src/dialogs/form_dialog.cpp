#include "dialogs/form_dialog.h"

#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QRadioButton>
#include <QVariant>

#include "control/error_texts.h"
#include "dialogs/control_ids.h"
#include "format/error_codes.h"
#include "format/records.h"
#include "platform/user_interface.h"

namespace korvex {

namespace {

constexpr const char* id_property = "controlId";

// A radio button of a group can only be turned off by another one, unless it leaves the group.
void turn_off(QRadioButton* button) {
  button->setAutoExclusive(false);
  button->setChecked(false);
  button->setAutoExclusive(true);
}

// An edit that cannot be typed into does not look as if it could.
void show_read_only(QLineEdit* edit) {
  QPalette palette = edit->palette();
  palette.setBrush(QPalette::Base, palette.window());
  edit->setPalette(palette);
}

}  // namespace

FormDialog::FormDialog(QWidget* parent) : QDialog(parent) {}

int FormDialog::run() {
  if (!initialise()) return dialog_result::cancel;
  return exec() == dialog_result::ok ? dialog_result::ok : dialog_result::cancel;
}

void FormDialog::index_controls() {
  for (QWidget* widget : findChildren<QWidget*>()) {
    const QVariant id = widget->property(id_property);
    if (!id.isValid()) continue;
    [[maybe_unused]] const bool is_new = controls_.emplace(id.toInt(), widget).second;
    assert(is_new);
    auto* edit = qobject_cast<QLineEdit*>(widget);
    if (edit != nullptr && edit->isReadOnly()) show_read_only(edit);
  }
  if (controls_.contains(control_id::ok)) {
    connect(button(control_id::ok), &QAbstractButton::clicked, this, &QDialog::accept);
  }
  connect(button(control_id::cancel), &QAbstractButton::clicked, this, &QDialog::reject);
}

void FormDialog::tell_failure() noexcept {
  try {
    std::string text;
    append_error_text(error::out_of_memory, layout_kind::record_file, text);
    platform::user_interface().show_message(platform::MessageKind::stop, text);
  } catch (...) {
    // Not even a message could be shown.
  }
}

QWidget* FormDialog::control(int id) const {
  const auto found = controls_.find(id);
  assert(found != controls_.end());
  return found->second;
}

QAbstractButton* FormDialog::button(int id) const { return control<QAbstractButton>(id); }

void FormDialog::enable(std::span<const int> ids, bool is_enabled) {
  for (const int id : ids) enable(id, is_enabled);
}

void FormDialog::set_label(int id, const QString& text) {
  QWidget* widget = control(id);
  if (auto* label = qobject_cast<QLabel*>(widget)) {
    label->setText(text);
  } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
    group->setTitle(text);
  } else {
    button(id)->setText(text);
  }
}

bool FormDialog::is_checked(int id) const { return button(id)->isChecked(); }

void FormDialog::set_checked(int id, bool is_checked) { button(id)->setChecked(is_checked); }

int FormDialog::radio_choice(int first_id, int second_id) const {
  if (is_checked(first_id)) return 0;
  return is_checked(second_id) ? 1 : -1;
}

void FormDialog::set_radio_choice(int first_id, int second_id, int choice) {
  turn_off(control<QRadioButton>(first_id));
  turn_off(control<QRadioButton>(second_id));
  if (choice == 0) set_checked(first_id, true);
  if (choice == 1) set_checked(second_id, true);
}

void FormDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) return;
  QDialog::keyPressEvent(event);
}

}  // namespace korvex
