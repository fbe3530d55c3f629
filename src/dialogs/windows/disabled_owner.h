#pragma once

#include <QPointer>
#include <QWidget>

namespace korvex {

// Keeps a window from taking input, closing included, and gives it back its input and its focus at
// the end, whatever the end is. Without effect on null and on a window that somebody else has
// disabled.
class DisabledOwner : public QObject {
 public:
  explicit DisabledOwner(QWidget* owner);
  ~DisabledOwner() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<QWidget> owner_;
  QPointer<QWidget> focus_;
};

}  // namespace korvex
