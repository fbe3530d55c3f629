#pragma once

#include <QPointer>
#include <QWidget>

namespace korvex {

// The owner of everything that is shown while a call runs and no window of it is open yet.
class CallOwner {
 public:
  explicit CallOwner(void* handle);
  ~CallOwner();
  CallOwner(const CallOwner&) = delete;
  CallOwner& operator=(const CallOwner&) = delete;

 private:
  void* previous_;
};

// The window of this process that a dialog belongs to: the one with the native handle or, without a
// handle, the modal one, the one of the running call, or the active one. Null when there is none;
// another program's window is no widget here.
QWidget* owner_widget(void* handle);

// Puts a window above another program's window. Without effect when the handle belongs to this
// process or the display cannot do it.
void attach_to_foreign_owner(QWidget& window, void* handle);

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
