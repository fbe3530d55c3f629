#include "dialogs/windows/select_format_example_dlg.h"

#include <QListWidget>
#include <QPushButton>

#include "dialogs/rules/format_precheck.h"
#include "dialogs/rules/store_range.h"
#include "dialogs/widgets/code_page_edit.h"
#include "dialogs/widgets/control_ids.h"
#include "platform/settings_store.h"
#include "ui_ClSelectFormatExampleDlg.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

using platform::MessageKind;

// The form's widgets exist before the members that show them.
QListWidget& set_up(ClSelectFormatExampleDlg& dialog) {
  Ui::ClSelectFormatExampleDlg form;
  form.setupUi(&dialog);
  return *form.exampleList;
}

}  // namespace

ClSelectFormatExampleDlg::ClSelectFormatExampleDlg(QWidget* parent, const Messages& messages,
                                                   std::string format)
    : FormDialog(parent),
      messages_(messages),
      format_(std::move(format)),
      list_(set_up(*this), examples_) {
  index_controls();
  auto* const list = control<QListWidget>(control_id::examples);
  on_click(control_id::add_example, [this] { add_example(); });
  on_click(control_id::delete_example, [this] { delete_example(); });
  const auto take = [this] { carry_out([this] { take_selected(); }); };
  connect(list, &QListWidget::currentRowChanged, this, take);
  // The entry that is selected at the start may be the wanted one.
  connect(list, &QListWidget::itemClicked, this, take);
  connect(list, &QListWidget::itemDoubleClicked, this, [this, take] {
    take();
    accept();
  });
}

bool ClSelectFormatExampleDlg::initialise() {
  show_format(format_);
  examples_.load(platform::SettingsStore(platform::host_key()));
  list_.fill();
  apply_button_rule();
  return true;
}

void ClSelectFormatExampleDlg::show_format(const std::string& format) {
  control<CodePageEdit>(control_id::example_format)->set_bytes(format);
}

void ClSelectFormatExampleDlg::take_selected() {
  format_ = list_.selected();
  show_format(format_);
}

void ClSelectFormatExampleDlg::apply_button_rule() {
  enable(control_id::add_example, examples_.can_add());
  enable(control_id::delete_example, examples_.can_delete());
}

void ClSelectFormatExampleDlg::add_example() {
  const std::string format = control<CodePageEdit>(control_id::example_format)->bytes();
  if (format.size() >= format_size_limit) {
    return refuse(MessageKind::warning, error::format_too_long);
  }
  if (examples_.contains(format)) {
    return refuse(MessageKind::information, error::example_exists);
  }
  if (const ErrorCode code = precheck_format(format).code(); code != error::none) {
    return refuse(MessageKind::warning, code, range_hint(code));
  }
  list_.add(format);
  list_.select_last();
  take_selected();
  apply_button_rule();
  is_changed_ = true;
}

void ClSelectFormatExampleDlg::refuse(MessageKind kind, ErrorCode code, std::string_view hint) {
  messages_.show(kind, code, platform::MessageText::words(hint));
  return_to(control_id::example_format);
}

void ClSelectFormatExampleDlg::delete_example() {
  if (!list_.delete_selected()) {
    return messages_.show(MessageKind::information, error::example_is_default);
  }
  take_selected();
  apply_button_rule();
  is_changed_ = true;
  setFocus();
}

void ClSelectFormatExampleDlg::on_ok() {
  format_ = control<CodePageEdit>(control_id::example_format)->bytes();
  if (is_changed_) {
    const ErrorCode code = examples_.save(platform::SettingsStore(platform::host_key()));
    if (code != error::none) return messages_.show(MessageKind::warning, code);
  }
  end(dialog_result::ok);
}

void ClSelectFormatExampleDlg::on_cancel() {
  if (is_changed_ && messages_.ask(error::examples_changed)) return;
  end(dialog_result::cancel);
}

}  // namespace korvex
