#include "dialogs/up_down.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

namespace korvex {

namespace {

constexpr int arrow_width = 20;
constexpr int least_arrow_height = 10;

// An integer of any length, brought into the range of a number that can be stepped.
std::optional<qlonglong> read_integer(const QString& text, int minimum, int maximum) {
  const QString trimmed = text.trimmed();
  const bool has_sign = trimmed.startsWith(u'-') || trimmed.startsWith(u'+');
  const QStringView digits = QStringView(trimmed).mid(has_sign ? 1 : 0);
  const auto is_digit = [](QChar c) { return c >= u'0' && c <= u'9'; };
  if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), is_digit)) return std::nullopt;
  bool fits = false;
  const int number = trimmed.toInt(&fits);
  if (fits) return number;
  return trimmed.startsWith(u'-') ? qlonglong{minimum} - 1 : qlonglong{maximum} + 1;
}

}  // namespace

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(make_arrow(Qt::UpArrow, tr("Increase"), 1));
  column->addWidget(make_arrow(Qt::DownArrow, tr("Decrease"), -1));
}

QToolButton* UpDown::make_arrow(Qt::ArrowType arrow, const QString& name, int change) {
  auto* button = new QToolButton(this);
  button->setArrowType(arrow);
  button->setAccessibleName(name);
  button->setAutoRepeat(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  button->setFixedWidth(arrow_width);
  button->setMinimumHeight(least_arrow_height);
  connect(button, &QToolButton::clicked, this, [this, change] { step(change); });
  return button;
}

void UpDown::set_buddy(QLineEdit* buddy) {
  if (buddy_) buddy_->removeEventFilter(this);
  buddy_ = buddy;
  if (buddy_) buddy_->installEventFilter(this);
}

void UpDown::set_range(int minimum, int maximum) {
  minimum_ = minimum;
  maximum_ = maximum;
}

void UpDown::step(int change) {
  if (!buddy_) return;
  const auto number = read_integer(buddy_->text(), minimum_, maximum_);
  if (!number) return;
  const qlonglong stepped = std::clamp<qlonglong>(*number + change, minimum_, maximum_);
  buddy_->setText(QString::number(stepped));
}

bool UpDown::eventFilter(QObject* watched, QEvent* event) {
  // The kind of event first: an edit that is being destroyed still sends some.
  if (event->type() != QEvent::KeyPress || watched != buddy_ || !isEnabled()) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const bool is_arrow = key->key() == Qt::Key_Up || key->key() == Qt::Key_Down;
  if (!is_arrow || (key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  step(key->key() == Qt::Key_Up ? 1 : -1);
  return true;
}

}  // namespace korvex
