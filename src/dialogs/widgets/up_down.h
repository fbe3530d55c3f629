#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

class QToolButton;

namespace korvex {

// Two arrows beside a line edit that holds a number: they, and the arrow keys in the edit, step it
// by one within a range, from 0 when nothing is there. Decimals stay as they are. The user may
// type beyond the range: a step towards it comes back into it, a step away from it does nothing. A
// text that is no number stays. Each step can be undone in the edit.
class UpDown : public QWidget {
  Q_OBJECT
  Q_PROPERTY(int minimum READ minimum WRITE set_minimum)
  Q_PROPERTY(int maximum READ maximum WRITE set_maximum)
  // What the number is, for a screen reader.
  Q_PROPERTY(QString subject READ subject WRITE set_subject)

 public:
  explicit UpDown(QWidget* parent = nullptr);

  void set_buddy(QLineEdit* buddy);
  QLineEdit* buddy() const { return buddy_; }

  void set_range(int minimum, int maximum);
  int minimum() const { return minimum_; }
  int maximum() const { return maximum_; }

  QString subject() const { return subject_; }
  void set_subject(const QString& subject);

  void step(int change);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QToolButton* make_arrow(Qt::ArrowType arrow, int change);
  void set_minimum(int minimum) { set_range(minimum, maximum_); }
  void set_maximum(int maximum) { set_range(minimum_, maximum); }

  QToolButton* up_;
  QToolButton* down_;
  QPointer<QLineEdit> buddy_;
  QString subject_;
  int minimum_ = 0;
  int maximum_ = 100;
};

}  // namespace korvex
