#include "dialogs/widgets/scroll_pane.h"

#include <QApplication>

namespace korvex {

ScrollPane::ScrollPane(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* now) { show_focused(now); });
}

// The focus leaves the controls while they are destroyed, when this is no scroll pane any more.
ScrollPane::~ScrollPane() { disconnect(qApp, nullptr, this, nullptr); }

QSize ScrollPane::sizeHint() const {
  return widget() != nullptr ? widget()->sizeHint() : QScrollArea::sizeHint();
}

// What is being clicked must not move away from under the mouse.
void ScrollPane::show_focused(QWidget* now) {
  if (now == nullptr || !isAncestorOf(now) || QApplication::mouseButtons() != Qt::NoButton) return;
  ensureWidgetVisible(now);
}

}  // namespace korvex
