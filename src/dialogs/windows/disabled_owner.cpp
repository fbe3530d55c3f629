#include "dialogs/windows/disabled_owner.h"

#include <QEvent>

namespace korvex {

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
