#include "dialogs/preview_note.h"

#include <QHelpEvent>
#include <QLayout>
#include <QLineEdit>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>
#include <chrono>

#include "dialogs/control_ids.h"
#include "dialogs/shown_text.h"

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
  connect(&pause_, &QTimer::timeout, this, [this] { look(); });
}

PreviewNote::~PreviewNote() { dialog_.removeEventFilter(this); }

void PreviewNote::watch(std::initializer_list<int> ids) {
  for (const int id : ids) {
    auto* const edit = dialog_.control<QLineEdit>(id);
    edits_.push_back(edit);
    connect(edit, &QLineEdit::textChanged, this, [this] { refresh(); });
  }
}

// A look that fails shows nothing: the user has asked for none.
void PreviewNote::look() noexcept {
  try {
    text_ = QString::fromStdString(preview_());
  } catch (...) {
    text_.clear();
  }
  for (QLineEdit* edit : edits_) {
    edit->setToolTip(tooltip_text(text_));
    edit->setAccessibleDescription(text_);
  }
  dialog_.update();
}

// To the left of OK, below whatever stands above it there.
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

// As many lines as there is room for; three dots where that is not enough.
void PreviewNote::draw() const {
  QPainter painter(&dialog_);
  const QFontMetrics metrics = painter.fontMetrics();
  painter.setPen(dialog_.palette().color(QPalette::WindowText));
  const QRect place = room();
  QTextLayout lines(text_, painter.font());
  lines.setTextOption(QTextOption(Qt::AlignLeft));
  lines.beginLayout();
  for (int top = place.top(); top + metrics.height() <= place.bottom();
       top += metrics.lineSpacing()) {
    QTextLine line = lines.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(place.width());
    const bool is_last = top + metrics.lineSpacing() + metrics.height() > place.bottom();
    const QString rest = text_.mid(line.textStart());
    painter.drawText(QPoint(place.left(), top + metrics.ascent()),
                     is_last ? metrics.elidedText(rest, Qt::ElideRight, place.width())
                             : rest.left(line.textLength()));
  }
  lines.endLayout();
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
