#pragma once

#include <QFontMetrics>
#include <QObject>
#include <QTimer>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "dialogs/widgets/form_dialog.h"

namespace korvex {

// Says beside a form's closing buttons, in the room that they leave free, what the values being
// entered come to, a moment after the last change. Where the room is too small for all of it, it is
// the tooltip of that room and of the controls watched; a screen reader describes these by it.
class PreviewNote : public QObject {
 public:
  // `preview` answers UTF-8, and nothing for an empty note. The dialog must outlive the note.
  PreviewNote(FormDialog& dialog, std::function<std::string()> preview);
  ~PreviewNote() override;

  // Refreshes the note whenever one of these edits and drop-down lists changes.
  void watch(std::initializer_list<int> ids);

  // Something else has changed.
  void refresh() { pause_.start(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void look() noexcept;
  QRect room() const;
  void draw() const;
  QStringList lines_in(const QSize& room, const QFontMetrics& metrics) const;

  FormDialog& dialog_;
  std::function<std::string()> preview_;
  std::vector<QWidget*> controls_;
  QTimer pause_;
  QString text_;
};

}  // namespace korvex
