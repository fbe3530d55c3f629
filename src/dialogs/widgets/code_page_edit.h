#pragma once

#include <QLineEdit>
#include <string>
#include <string_view>

#include "platform/printable_text.h"

namespace korvex {

// A line edit for text of the module's code page.
//
// What is typed, pasted or committed by an input method must have a code there: otherwise the
// change is refused as a whole, text, cursor and selection stay, and the user is told which
// character it was. Of a pasted text of several lines the first is taken.
class CodePageEdit : public QLineEdit {
  Q_OBJECT
  // For forms. -1: no limit.
  Q_PROPERTY(int byteLimit READ byte_limit WRITE set_byte_limit)

 public:
  explicit CodePageEdit(QWidget* parent = nullptr);

  void set_bytes(std::string_view bytes);

  // The bytes that were set, as long as the text is the same: several characters have two codes,
  // and what has no meaning shows as U+FFFD. Otherwise the text converted; a U+FFFD in it, which
  // has no code, becomes a question mark.
  std::string bytes() const;

  // What the user adds is cut to the whole characters that fit. Bytes that are set are not.
  void set_byte_limit(int limit) { byte_limit_ = limit; }
  int byte_limit() const { return byte_limit_; }

 protected:
  bool event(QEvent* event) override;

 private:
  class Validator;

  // What is still to be done about a change that was refused.
  struct Refusal {
    platform::MessageText message;  // for the user, or empty, and then
    int position = 0;               // the part of the text that the change replaced,
    int length = 0;
    QString fitting;  // and what fits in its place
  };

  bool accepts(const QString& text, int cursor);
  void refuse(Refusal refusal);
  void settle_refusal();

  int byte_limit_ = -1;
  std::string set_bytes_;
  QString set_text_;
  QString accepted_text_;
  bool may_hold_replacements_ = false;
  qsizetype program_bytes_ = 0;  // how long the text was that the program set
  bool has_refusal_ = false;
  Refusal refusal_;
};

}  // namespace korvex
