#include "dialogs/widgets/up_down.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "platform/text_lines.h"

namespace korvex {

namespace {

constexpr int arrow_width = 20;
constexpr int least_arrow_height = 10;

constexpr int most_digits = 9;  // before the decimal point, and after it

// A number as it is written: 12.50 is 1250 with 2 decimals.
struct WrittenNumber {
  qlonglong digits;
  int decimals;
};

// Nothing for a text that is no number. One with more digits than any range has is taken for one
// just beyond them.
std::optional<WrittenNumber> read_number(const QString& text) {
  static const QRegularExpression pattern(
      QString("^\\s*([+-]?)0*([0-9]*)(?:\\.([0-9]{0,%1}))?\\s*$").arg(most_digits));
  const QRegularExpressionMatch match = pattern.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const bool has_digit = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
  if (!has_digit && !text.trimmed().isEmpty()) return std::nullopt;
  const QString whole = match.captured(2);
  const QString fraction = match.captured(3);
  const auto decimals = static_cast<int>(fraction.size());
  const qlonglong one = platform::power_of_ten<qlonglong>(decimals);
  const qlonglong size = whole.size() > most_digits ? platform::power_of_ten<qlonglong>(most_digits)
                                                    : whole.toLongLong();
  const qlonglong digits = size * one + fraction.toLongLong();
  return WrittenNumber{match.captured(1) == "-" ? -digits : digits, decimals};
}

QString written(const WrittenNumber& number) {
  QString digits = QString::number(std::abs(number.digits));
  if (number.decimals > 0) {
    digits = digits.rightJustified(number.decimals + 1, u'0');
    digits.insert(digits.size() - number.decimals, u'.');
  }
  return number.digits < 0 ? u'-' + digits : digits;
}

}  // namespace

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(up_ = make_arrow(Qt::UpArrow, 1));
  column->addWidget(down_ = make_arrow(Qt::DownArrow, -1));
}

QToolButton* UpDown::make_arrow(Qt::ArrowType arrow, int change) {
  auto* button = new QToolButton(this);
  button->setArrowType(arrow);
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

void UpDown::set_subject(const QString& subject) {
  subject_ = subject;
  setAccessibleName(tr("Change %1").arg(subject));
  up_->setAccessibleName(tr("Increase %1").arg(subject));
  down_->setAccessibleName(tr("Decrease %1").arg(subject));
}

void UpDown::step(int change) {
  if (!buddy_) return;
  const std::optional<WrittenNumber> number = read_number(buddy_->text());
  if (!number) return;
  const qlonglong one = platform::power_of_ten<qlonglong>(number->decimals);
  const qlonglong stepped =
      std::clamp(number->digits + change * one, minimum_ * one, maximum_ * one);
  const bool is_wrong_way = (stepped - number->digits) * change <= 0;
  if (is_wrong_way) return;
  buddy_->selectAll();
  buddy_->insert(written({stepped, number->decimals}));
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
