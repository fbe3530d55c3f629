#include "dialogs/widgets/form_dialog.h"

#include <QComboBox>
#include <QCursor>
#include <QGroupBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVariant>

#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/help_page.h"
#include "dialogs/widgets/item_list_ctrl.h"
#include "dialogs/widgets/window_memory.h"
#include "platform/codepage.h"
#include "platform/user_interface.h"
#include "values/error_codes.h"
#include "values/error_texts.h"
#include "values/records.h"

namespace korvex {

namespace {

constexpr const char* id_property = "controlId";

// Of a window that is not yet shown, as wide and high as common desktops draw it.
constexpr QSize usual_frame(8, 40);

// That of its owner, else the one that is being worked on.
const QScreen& screen_to_open_on(const QWidget& window) {
  if (window.parentWidget() != nullptr) return *window.parentWidget()->screen();
  const QScreen* const pointed_at = QGuiApplication::screenAt(QCursor::pos());
  return pointed_at != nullptr ? *pointed_at : *window.screen();
}

// Alt and the letter of a control that is off. Edits and lists would take it for typing, and give
// up what is selected.
bool is_unused_mnemonic(const QKeyEvent& key) {
  return key.modifiers() == Qt::AltModifier && !key.text().isEmpty() &&
         key.text().front().isPrint();
}

// A radio button of a group can only be turned off by another one, unless it leaves the group.
void turn_off(QRadioButton* button) {
  button->setAutoExclusive(false);
  button->setChecked(false);
  button->setAutoExclusive(true);
}

}  // namespace

FormDialog::FormDialog(QWidget* parent) : QDialog(parent) {}

int FormDialog::run() {
  if (!initialise()) return dialog_result::cancel;
  open_as_left();
  const int result = exec();
  // Window managers lose the owner when a question and the window that asked it close together.
  QWidget* const owner = parentWidget();
  if (owner != nullptr && owner->isVisible()) owner->activateWindow();
  keep_as_left();
  return result == dialog_result::ok ? dialog_result::ok : dialog_result::cancel;
}

QSize FormDialog::size_as_left(QWidget& form) {
  form.ensurePolished();
  form.layout()->activate();
  return WindowMemory(form.objectName()).size().value_or(form.size().expandedTo(form.sizeHint()));
}

void FormDialog::open_as_left() {
  const QRect screen = screen_to_open_on(*this).availableGeometry();
  resize(size_as_left(*this));
  fit_into(screen);
  choose_place(screen);
  size_at_first_ = size();
  if (list_ == nullptr) return;
  list_->set_user_widths(WindowMemory(objectName()).column_widths());
  widths_at_first_ = list_->user_widths();
}

void FormDialog::keep_as_left() {
  const WindowMemory memory(objectName());
  const bool is_own_size = !isMaximized() && !isFullScreen();
  if (is_own_size && size() != size_at_first_) memory.keep_size(size());
  if (list_ == nullptr || list_->user_widths() == widths_at_first_) return;
  memory.keep_column_widths(list_->user_widths());
}

QSize FormDialog::size_with_frame() const {
  const QWidget* const owner = parentWidget();
  const bool has_framed_owner = owner != nullptr && owner->isWindow() && owner->isVisible();
  const QSize frame =
      has_framed_owner ? owner->frameGeometry().size() - owner->size() : usual_frame;
  return size() + frame;
}

void FormDialog::fit_into(const QRect& screen) {
  const QSize frame = size_with_frame() - size();
  resize(size().boundedTo(screen.size() - frame));
}

void FormDialog::index_controls() {
  for (QWidget* widget : findChildren<QWidget*>()) {
    const QVariant id = widget->property(id_property);
    if (!id.isValid()) continue;
    [[maybe_unused]] const bool is_new = controls_.emplace(id.toInt(), widget).second;
    assert(is_new);
    if (auto* list = qobject_cast<ClItemListCtrl*>(widget)) list_ = list;
    if (qobject_cast<QLineEdit*>(widget) != nullptr) widget->installEventFilter(this);
    auto* push_button = qobject_cast<QPushButton*>(widget);
    if (push_button != nullptr && push_button->isDefault()) default_button_ = push_button;
    if (qobject_cast<QComboBox*>(widget) != nullptr) {
      widget->setFocusPolicy(Qt::StrongFocus);  // not by the wheel
      widget->installEventFilter(this);
    }
  }
  if (controls_.contains(control_id::ok)) {
    connect(button(control_id::ok), &QAbstractButton::clicked, this, &QDialog::accept);
  }
  if (controls_.contains(control_id::help)) {
    on_click(control_id::help, open_help_page);
    enable(control_id::help, !help_page().isEmpty());
  }
  show_read_only_edits();
  connect(button(control_id::cancel), &QAbstractButton::clicked, this, &QDialog::reject);
}

// An edit that cannot be typed into does not look as if it could.
void FormDialog::show_read_only_edits() {
  for (QLineEdit* edit : findChildren<QLineEdit*>()) {
    if (!edit->isReadOnly()) continue;
    QPalette changed;
    changed.setBrush(QPalette::Base, palette().window());
    edit->setPalette(changed);
  }
}

// The desktop may change its colours while a window is open.
void FormDialog::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) show_read_only_edits();
}

void FormDialog::tell_failure() noexcept {
  try {
    std::string text;
    try {
      throw;
    } catch (const platform::ConverterFailure& failure) {
      text = failure.what();
    } catch (...) {
      append_error_text(error::out_of_memory, layout_kind::record_file, text);
    }
    platform::user_interface().show_message(platform::MessageKind::stop,
                                            platform::MessageText::words(text));
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

void FormDialog::return_to(int id) {
  if (id == 0 || !control(id)->isEnabled()) return;
  control(id)->setFocus();
  const auto* const list = qobject_cast<QComboBox*>(control(id));
  auto* const edit = list != nullptr ? list->lineEdit() : qobject_cast<QLineEdit*>(control(id));
  if (edit != nullptr) edit->selectAll();
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

std::optional<ExceededAction> FormDialog::exceeded_choice() const {
  if (is_checked(control_id::exceeded_initialize)) return exceeded_action::initialize;
  if (is_checked(control_id::exceeded_repeat)) return exceeded_action::repeat;
  return std::nullopt;
}

void FormDialog::set_exceeded_choice(std::optional<ExceededAction> choice) {
  turn_off(control<QRadioButton>(control_id::exceeded_initialize));
  turn_off(control<QRadioButton>(control_id::exceeded_repeat));
  if (choice == exceeded_action::initialize) set_checked(control_id::exceeded_initialize, true);
  if (choice == exceeded_action::repeat) set_checked(control_id::exceeded_repeat, true);
}

void FormDialog::enter_presses(int control_id, int button_id) {
  QWidget* const widget = control(control_id);
  enter_buttons_.emplace(widget, control<QPushButton>(button_id));
  widget->installEventFilter(this);
}

void FormDialog::enter_presses_nothing(int control_id) {
  enter_buttons_.emplace(control(control_id), nullptr);
  control(control_id)->installEventFilter(this);
}

void FormDialog::change_default_button(const QObject* focused, bool has_focus) {
  const auto found = enter_buttons_.find(focused);
  if (found == enter_buttons_.end()) return;
  QPushButton* const button = has_focus ? found->second : default_button_;
  if (button != nullptr) {
    button->setDefault(true);
  } else if (default_button_ != nullptr) {
    default_button_->setDefault(false);
  }
}

bool FormDialog::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      change_default_button(watched, event->type() == QEvent::FocusIn);
      break;
    case QEvent::Wheel: {
      // Turning the wheel over a closed list scrolls the window; it chooses only where one works.
      const auto* const list = qobject_cast<const QComboBox*>(watched);
      if (list == nullptr || list->hasFocus()) break;
      event->ignore();
      return true;
    }
    case QEvent::KeyPress:
      if (!is_unused_mnemonic(*static_cast<const QKeyEvent*>(event))) break;
      event->ignore();
      return true;
    default:
      break;
  }
  return QDialog::eventFilter(watched, event);
}

// A key that is held down must not press what the next window offers.
void FormDialog::keyPressEvent(QKeyEvent* event) {
  const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_F1) return carry_out(open_help_page);
  if (is_enter && event->isAutoRepeat()) return;
  if (is_enter && (event->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier) {
    if (controls_.contains(control_id::ok)) button(control_id::ok)->click();
    return;
  }
  QDialog::keyPressEvent(event);
}

}  // namespace korvex
