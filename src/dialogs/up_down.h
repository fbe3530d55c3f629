#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

class QToolButton;

namespace korvex {

// Two arrows beside a line edit that holds an integer: they, and the arrow keys in the edit, step
// it by one within a range. The user may type beyond the range; the next step comes back into it. A
// text that is no integer stays.
class UpDown : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int minimum READ minimum WRITE set_minimum)
  Q_PROPERTY(int maximum READ maximum WRITE set_maximum)

 public:
  explicit UpDown(QWidget* parent = nullptr);

  void set_buddy(QLineEdit* buddy);
  QLineEdit* buddy() const { return buddy_; }

  void set_range(int minimum, int maximum);
  int minimum() const { return minimum_; }
  int maximum() const { return maximum_; }

  void step(int change);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QToolButton* make_arrow(Qt::ArrowType arrow, const QString& name, int change);
  void set_minimum(int minimum) { set_range(minimum, maximum_); }
  void set_maximum(int maximum) { set_range(minimum_, maximum); }

  QPointer<QLineEdit> buddy_;
  int minimum_ = 0;
  int maximum_ = 100;
};

}  // namespace korvex
