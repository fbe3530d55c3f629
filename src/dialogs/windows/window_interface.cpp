#include "dialogs/windows/window_interface.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPainter>
#include <QPointer>
#include <new>
#include <optional>

#include "dialogs/windows/display.h"
#include "dialogs/windows/generating_data_dlg.h"
#include "dialogs/windows/parent_window.h"
#include "platform/codepage.h"
#include "platform/interruption.h"
#include "platform/process.h"

namespace korvex {

namespace {

using platform::Answer;
using platform::MessageKind;

bool is_question(MessageKind kind) {
  return kind == MessageKind::question || kind == MessageKind::warning_question;
}

QMessageBox::Icon icon_of(MessageKind kind) {
  switch (kind) {
    case MessageKind::information:
      return QMessageBox::Information;
    case MessageKind::warning:
    case MessageKind::warning_question:
      return QMessageBox::Warning;
    case MessageKind::stop:
      return QMessageBox::Critical;
    case MessageKind::question:
      return QMessageBox::Question;
    case MessageKind::plain:
      break;
  }
  return QMessageBox::NoIcon;
}

// A pattern that asks for a dot would leave out files without an extension.
QString pattern_of(const platform::FileFilter& filter) {
  return filter.pattern == "*.*" ? "*" : QString::fromStdString(filter.pattern);
}

// Shows a run in the progress window. The run goes on without one when the window cannot be made,
// or when its owner is destroyed and takes it along.
class WindowProgress : public platform::ProgressSink {
 public:
  WindowProgress(void* parent, bool cancel_allowed) {
    try {
      window_ = new ClGeneratingDataDlg(parent, cancel_allowed);
    } catch (const std::bad_alloc&) {
      window_ = nullptr;
    }
  }
  ~WindowProgress() override { delete window_; }
  WindowProgress(const WindowProgress&) = delete;
  WindowProgress& operator=(const WindowProgress&) = delete;

  void show(int percent) override {
    if (window_ != nullptr) window_->show_percentage(percent);
  }
  bool cancel_requested() override {
    return platform::is_interrupted() || (window_ != nullptr && window_->cancel_requested());
  }

 private:
  QPointer<ClGeneratingDataDlg> window_;
};

class OverrideCursor : public platform::WaitCursor {
 public:
  explicit OverrideCursor(Qt::CursorShape shape) { QApplication::setOverrideCursor(shape); }
  ~OverrideCursor() override { QApplication::restoreOverrideCursor(); }
  OverrideCursor(const OverrideCursor&) = delete;
  OverrideCursor& operator=(const OverrideCursor&) = delete;
};

// Ctrl+C copies what the box says. A question wants an answer: neither Escape nor closing the
// window is one.
class MessageBox : public QMessageBox {
 public:
  MessageBox(MessageKind kind, const QString& text, QWidget* owner)
      : QMessageBox(icon_of(kind), QApplication::applicationDisplayName(), text,
                    is_question(kind) ? Yes | No : StandardButtons(Ok), owner),
        needs_answer_(is_question(kind)) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Without a title bar, for not every window manager leaves just the close box out of one.
    if (needs_answer_) setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy)) {
      QApplication::clipboard()->setText(text());
    } else if (event->key() != Qt::Key_Escape || !needs_answer_) {
      QMessageBox::keyPressEvent(event);
    }
  }
  void closeEvent(QCloseEvent* event) override {
    if (needs_answer_) return event->ignore();
    QMessageBox::closeEvent(event);
  }

  void paintEvent(QPaintEvent* event) override {
    QMessageBox::paintEvent(event);
    if (!needs_answer_) return;
    QPainter painter(this);  // nothing else sets it off from the window below
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }

 private:
  bool needs_answer_;
};

}  // namespace

Answer WindowInterface::show_message(MessageKind kind, const platform::MessageText& text) {
  MessageBox box(kind, QString::fromStdString(text.utf8()), owner_widget(nullptr));
  // The user does not wait while a message waits for an answer.
  std::optional<OverrideCursor> pointer;
  if (QApplication::overrideCursor() != nullptr) pointer.emplace(Qt::ArrowCursor);
  const int answer = box.exec();
  if (!is_question(kind)) return Answer::ok;
  return answer == QMessageBox::Yes ? Answer::yes : Answer::no;
}

std::unique_ptr<platform::ProgressSink> WindowInterface::open_progress(void* parent,
                                                                       bool cancel_allowed) {
  return std::make_unique<WindowProgress>(parent, cancel_allowed);
}

std::unique_ptr<platform::WaitCursor> WindowInterface::show_wait_cursor() {
  if (!has_display()) return nullptr;
  return std::make_unique<OverrideCursor>(Qt::WaitCursor);
}

std::error_code WindowInterface::open_editor(const std::string& path) {
  return platform::run_editor(path, platform::EditorWait::never);
}

std::optional<std::string> WindowInterface::choose_file(const platform::FileQuestion& question) {
  QFileDialog dialog(owner_widget(nullptr), QString::fromStdString(question.title),
                     QFile::decodeName(question.folder.c_str()));
  dialog.setFileMode(QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  QStringList filters;
  for (const platform::FileFilter& filter : question.filters) {
    filters << QString::fromStdString(filter.label) + " (" + pattern_of(filter) + ')';
  }
  dialog.setNameFilters(filters);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

}  // namespace korvex
