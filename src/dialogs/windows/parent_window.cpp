#include "dialogs/windows/parent_window.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

namespace korvex {

namespace {

WId window_id(void* handle) { return static_cast<WId>(reinterpret_cast<quintptr>(handle)); }

QWidget* window_with(void* handle) {
  const QWidget* widget = QWidget::find(window_id(handle));
  return widget != nullptr ? widget->window() : nullptr;
}

void* call_owner = nullptr;

}  // namespace

CallOwner::CallOwner(void* handle) : previous_(call_owner) { call_owner = handle; }

CallOwner::~CallOwner() { call_owner = previous_; }

QWidget* owner_widget(void* handle) {
  if (handle != nullptr) return window_with(handle);
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return call_owner != nullptr ? window_with(call_owner) : QApplication::activeWindow();
}

void attach_to_foreign_owner(QWidget& window, void* handle) {
  const bool can_attach = QApplication::platformName() == "xcb";
  if (handle == nullptr || !can_attach || owner_widget(handle) != nullptr) return;
  QWindow* owner = QWindow::fromWinId(window_id(handle));
  if (owner == nullptr) return;
  window.winId();  // makes the native window
  window.windowHandle()->setTransientParent(owner);
  QObject::connect(&window, &QObject::destroyed, owner, &QObject::deleteLater);
}

DisabledOwner::DisabledOwner(QWidget* owner) {
  if (owner == nullptr || !owner->isEnabled()) return;
  owner_ = owner;
  focus_ = owner->focusWidget();
  owner->setEnabled(false);
  owner->installEventFilter(this);
}

DisabledOwner::~DisabledOwner() {
  if (owner_ == nullptr) return;
  owner_->setEnabled(true);
  if (focus_ != nullptr) focus_->setFocus();
}

// A disabled window can still be closed from its frame.
bool DisabledOwner::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::Close) return false;
  event->ignore();
  return true;
}

}  // namespace korvex
