#include "dialogs/widgets/code_page_edit.h"

#include <QMetaObject>
#include <QValidator>
#include <algorithm>
#include <optional>
#include <utility>

#include "dialogs/widgets/shown_text.h"
#include "platform/codepage.h"
#include "platform/user_interface.h"

namespace korvex {

namespace {

constexpr QChar replacement = QChar::ReplacementCharacter;

std::string to_code_page(QString text) {
  text.replace(replacement, u'?');
  return platform::from_utf8(text.toStdString()).value_or(std::string());
}

qsizetype byte_count(const QString& text) {
  return static_cast<qsizetype>(to_code_page(text).size());
}

// The first character of the text that the code page lacks.
std::optional<QString> character_without_code(const QString& text) {
  const std::string utf8 = text.toStdString();
  std::size_t offset = 0;
  if (platform::from_utf8(utf8, &offset)) return std::nullopt;
  const QString rest = QString::fromStdString(utf8.substr(offset));
  return rest.left(rest.front().isHighSurrogate() ? 2 : 1);
}

QString first_line(const QString& text) {
  const auto is_break = [](QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator;
  };
  return text.left(std::find_if(text.begin(), text.end(), is_break) - text.begin());
}

QString fitting_part(QString text, qsizetype room) {
  while (!text.isEmpty() && byte_count(text) > room) text.chop(1);
  return text;
}

// The one place at which two texts differ.
struct Difference {
  qsizetype position;
  qsizetype old_length;
  qsizetype new_length;
};

// `cursor` is where the inserted part ends, which tells it from equal characters after it.
Difference compare(const QString& old_text, const QString& new_text, int cursor) {
  const qsizetype shorter = std::min(old_text.size(), new_text.size());
  const qsizetype most = std::min(shorter, new_text.size() - cursor);
  const auto tail = std::mismatch(old_text.rbegin(), old_text.rbegin() + most, new_text.rbegin());
  const qsizetype same_end = tail.first - old_text.rbegin();
  const auto head =
      std::mismatch(old_text.begin(), old_text.begin() + (shorter - same_end), new_text.begin());
  const qsizetype same_start = head.first - old_text.begin();
  return {same_start, old_text.size() - same_end - same_start,
          new_text.size() - same_end - same_start};
}

}  // namespace

// Refusing through a validator lets the line edit take back exactly the one change, with its cursor
// and selection, whichever way it came.
class CodePageEdit::Validator : public QValidator {
 public:
  explicit Validator(CodePageEdit* edit) : QValidator(edit), edit_(*edit) {}
  State validate(QString& input, int& cursor) const override {
    try {
      return edit_.accepts(input, cursor) ? Acceptable : Invalid;
    } catch (const platform::ConverterFailure& failure) {
      edit_.refuse({platform::MessageText::words(failure.what()), 0, 0, {}});
      return Invalid;
    }
  }

 private:
  CodePageEdit& edit_;
};

CodePageEdit::CodePageEdit(QWidget* parent) : QLineEdit(parent) {
  setValidator(new Validator(this));
}

void CodePageEdit::set_bytes(std::string_view bytes) {
  set_bytes_ = bytes;
  set_text_ = shown(bytes);
  setText(set_text_);
  if (isReadOnly()) setCursorPosition(0);  // a long text is seen from its beginning
}

std::string CodePageEdit::bytes() const {
  return text() == set_text_ ? set_bytes_ : to_code_page(text());
}

bool CodePageEdit::accepts(const QString& text, int cursor) {
  if (!isModified()) {  // the program's own text
    may_hold_replacements_ = text.contains(replacement);
    program_bytes_ = text == set_text_ ? std::ssize(set_bytes_) : byte_count(text);
    accepted_text_ = text;
    return true;
  }
  const Difference change = compare(accepted_text_, text, cursor);
  const QString inserted = text.mid(change.position, change.new_length);
  QString fitting = first_line(inserted);
  QString checked = fitting;
  if (may_hold_replacements_) checked.replace(replacement, u'?');
  if (const auto character = character_without_code(checked)) {
    refuse(
        {platform::MessageText::path(character->toStdString()) + " has no code in code page 932.",
         0,
         0,
         {}});
    return false;
  }
  if (byte_limit_ >= 0) {
    const qsizetype others = byte_count(text) - byte_count(inserted);
    fitting = fitting_part(fitting, std::max<qsizetype>(byte_limit_, program_bytes_) - others);
  }
  if (fitting != inserted) {
    refuse({{}, static_cast<int>(change.position), static_cast<int>(change.old_length), fitting});
    return false;
  }
  accepted_text_ = text;
  return true;
}

// The line edit has yet to take the change back, so what follows from it waits: until the end of
// the event that brought the change, or, for changes that come without one, of the present one.
void CodePageEdit::refuse(Refusal refusal) {
  refusal_ = std::move(refusal);
  has_refusal_ = true;
  QMetaObject::invokeMethod(this, &CodePageEdit::settle_refusal, Qt::QueuedConnection);
}

void CodePageEdit::settle_refusal() {
  if (!std::exchange(has_refusal_, false)) return;
  const Refusal refusal = std::exchange(refusal_, {});
  if (!refusal.message.empty()) {
    platform::user_interface().show_message(platform::MessageKind::warning, refusal.message);
  } else if (!refusal.fitting.isEmpty()) {
    setSelection(refusal.position, refusal.length);
    insert(refusal.fitting);
  }
}

bool CodePageEdit::event(QEvent* event) {
  const bool is_handled = QLineEdit::event(event);
  settle_refusal();
  return is_handled;
}

}  // namespace korvex
