#include "dialogs/windows/preview_note.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QLayout>
#include <QLineEdit>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>
#include <chrono>

#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/shown_text.h"

namespace korvex {

namespace {

// Long enough for the next key, short enough to seem at once.
constexpr std::chrono::milliseconds pause_after_key(200);

constexpr int distance = 4;  // of the text from what surrounds it

}  // namespace

PreviewNote::PreviewNote(FormDialog& dialog, std::function<std::string()> preview)
    : dialog_(dialog), preview_(std::move(preview)) {
  dialog.installEventFilter(this);
  pause_.setSingleShot(true);
  pause_.setInterval(pause_after_key);
  connect(&pause_, &QTimer::timeout, this, &PreviewNote::look);
}

PreviewNote::~PreviewNote() { dialog_.removeEventFilter(this); }

void PreviewNote::watch(std::initializer_list<int> ids) {
  for (const int id : ids) {
    QWidget* const control = dialog_.control(id);
    controls_.push_back(control);
    if (auto* const edit = qobject_cast<QLineEdit*>(control)) {
      connect(edit, &QLineEdit::textChanged, this, &PreviewNote::refresh);
    } else if (auto* const list = qobject_cast<QComboBox*>(control)) {
      connect(list, &QComboBox::currentTextChanged, this, &PreviewNote::refresh);
    }
  }
}

// A look that fails shows nothing: the user has asked for none.
void PreviewNote::look() noexcept {
  try {
    text_ = QString::fromStdString(preview_());
  } catch (...) {
    text_.clear();
  }
  for (QWidget* control : controls_) {
    control->setToolTip(tooltip_text(text_));
    control->setAccessibleDescription(text_);
  }
  dialog_.update();
}

// To the left of OK, below whatever is above it there.
QRect PreviewNote::room() const {
  const QRect ok = dialog_.control(control_id::ok)->geometry();
  const int left = dialog_.layout()->contentsMargins().left();
  const int right = ok.left() - distance;
  int top = 0;
  for (const QWidget* child :
       dialog_.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    const QRect place = child->geometry();
    const bool is_above = place.left() < right && place.bottom() < ok.center().y();
    if (child->isVisible() && is_above) top = std::max(top, place.bottom());
  }
  return QRect(QPoint(left, top + distance), QPoint(right, dialog_.height() - distance));
}

void PreviewNote::draw() const {
  QPainter painter(&dialog_);
  const QFontMetrics metrics = painter.fontMetrics();
  painter.setPen(dialog_.palette().color(QPalette::WindowText));
  const QRect place = room();
  const QStringList lines = lines_in(place.size(), metrics);
  const int height =
      metrics.height() + (static_cast<int>(lines.size()) - 1) * metrics.lineSpacing();
  const int beside_ok = dialog_.control(control_id::ok)->geometry().center().y() - height / 2;
  QPoint start(place.left(), std::max(beside_ok, place.top()) + metrics.ascent());
  for (const QString& line : lines) {
    painter.drawText(start, line);
    start.ry() += metrics.lineSpacing();
  }
}

// As many lines as there is room for; three dots where that is not enough.
QStringList PreviewNote::lines_in(const QSize& room, const QFontMetrics& metrics) const {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(text_, dialog_.font());
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  for (int bottom = metrics.height(); bottom <= room.height(); bottom += metrics.lineSpacing()) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(room.width());
    const bool is_last = bottom + metrics.lineSpacing() > room.height();
    const QString rest = text_.mid(line.textStart());
    lines << (is_last ? metrics.elidedText(rest, Qt::ElideRight, room.width())
                      : rest.left(line.textLength()));
  }
  layout.endLayout();
  return lines;
}

bool PreviewNote::eventFilter(QObject* watched, QEvent* event) {
  if (text_.isEmpty()) return QObject::eventFilter(watched, event);
  if (event->type() == QEvent::Paint) draw();
  if (event->type() != QEvent::ToolTip) return QObject::eventFilter(watched, event);
  const auto* const question = static_cast<const QHelpEvent*>(event);
  if (!room().contains(question->pos())) return QObject::eventFilter(watched, event);
  QToolTip::showText(question->globalPos(), tooltip_text(text_), &dialog_);
  return true;
}

}  // namespace korvex
