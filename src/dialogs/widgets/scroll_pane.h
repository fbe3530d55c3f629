#pragma once

#include <QScrollArea>

namespace korvex {

// Holds the controls of a form and scrolls when the window is smaller than they need, so that the
// buttons that close the window stay in sight beside it. A control that gets the focus otherwise
// than by the mouse is brought into view.
class ScrollPane : public QScrollArea {
  Q_OBJECT

 public:
  explicit ScrollPane(QWidget* parent = nullptr);
  ~ScrollPane() override;

  // All that its controls like to have.
  QSize sizeHint() const override;

 private:
  void show_focused(QWidget* now);
};

}  // namespace korvex
