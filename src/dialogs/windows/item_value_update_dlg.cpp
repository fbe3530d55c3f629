#include "dialogs/windows/item_value_update_dlg.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QShortcut>

#include "control/item_settings.h"
#include "control/reconcile.h"
#include "dialogs/rules/explanations.h"
#include "dialogs/rules/format_precheck.h"
#include "dialogs/rules/initial_settings.h"
#include "dialogs/rules/save_checks.h"
#include "dialogs/rules/setup_fields.h"
#include "dialogs/rules/store_range.h"
#include "dialogs/rules/value_preview.h"
#include "dialogs/widgets/code_page_edit.h"
#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/drop_down_list.h"
#include "dialogs/widgets/shown_text.h"
#include "dialogs/windows/range_controls.h"
#include "dialogs/windows/select_item_dlg.h"
#include "platform/settings_store.h"
#include "ui_ClItemValueUpdateDlg.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

using platform::MessageKind;

constexpr int item_value_controls[] = {control_id::start,     control_id::start_label,
                                       control_id::end,       control_id::end_label,
                                       control_id::increment, control_id::increment_label};
constexpr int item_exceeded_controls[] = {control_id::exceeded_initialize,
                                          control_id::exceeded_repeat};
constexpr int item_format_controls[] = {control_id::format, control_id::format_label,
                                        control_id::update_examples,
                                        control_id::update_examples_label};

// The form's widgets exist before the members that show them.
QListWidget& set_up(ClItemValueUpdateDlg& dialog) {
  Ui::ClItemValueUpdateDlg form;
  form.setupUi(&dialog);
  return *form.exampleList;
}

}  // namespace

ClItemValueUpdateDlg::ClItemValueUpdateDlg(QWidget* parent, const std::string& control_path)
    : FormDialog(parent),
      messages_(main_),
      list_(set_up(*this), examples_),
      note_(*this, [this] { return preview(); }) {
  main_.control_path = control_path;
  main_.set_run_mode(run_mode::settings_only);
  index_controls();
  connect_commands();
}

void ClItemValueUpdateDlg::connect_commands() {
  on_click(control_id::add_example, [this] { add_example(); });
  on_click(control_id::delete_example, [this] { delete_example(); });
  on_click(control_id::browse_items, [this] { browse_items(); });
  connect(control<QCheckBox>(control_id::custom_format), &QCheckBox::clicked, this,
          [this](bool is_ticked) { enable_custom_format(is_ticked); });
  auto* const type = control<DropDownList>(control_id::type);
  connect(type, &QComboBox::activated, this,
          [this](int entry) { carry_out([this, entry] { select_type(entry); }); });
  connect(type, &DropDownList::opening, this, [this] { carry_out([this] { named_position(); }); });
  connect(control<CodePageEdit>(control_id::update_name), &QLineEdit::textEdited, this, [this] {
    carry_out([this] { explain_named_item(); });
    note_.refresh();
  });
  auto* const list = control<QListWidget>(control_id::update_examples);
  const auto take = [this] {
    carry_out([this] { control<CodePageEdit>(control_id::format)->set_bytes(list_.selected()); });
  };
  connect(list, &QListWidget::itemDoubleClicked, this, take);
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    connect(new QShortcut(key, list, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, take);
  }
  enter_presses_nothing(control_id::update_examples);
  note_.watch({control_id::type, control_id::format, control_id::start, control_id::end,
               control_id::increment});
}

bool ClItemValueUpdateDlg::initialise() {
  const auto cursor = platform::user_interface().show_wait_cursor();
  if (!load()) return false;
  fill_labels();
  if (!main_.items.empty()) show_item(start_position());
  enable_range(false);
  set_exceeded_choice(exceeded_action::initialize);
  auto* const name = control<CodePageEdit>(control_id::update_name);
  const auto length = static_cast<int>(name->text().size());
  name->setSelection(length, -length);  // all of it, seen from its beginning
  examples_.load(platform::SettingsStore(platform::host_key()));
  list_.fill();
  return true;
}

bool ClItemValueUpdateDlg::load() {
  ErrorCode result = main_.load();
  if (result == error::none) result = reconcile(main_).code();
  if (result != error::none) return refuse(result, {}, 0);
  return !main_.mismatch;  // which was reported to the user
}

void ClItemValueUpdateDlg::fill_labels() {
  const bool is_record_file = main_.layout_kind() == layout_kind::record_file;
  set_label(control_id::update_name_label, is_record_file ? "Ite&m Name :" : "Colu&mn Name :");
  set_label(control_id::exceeded_initialize, is_record_file ? "&Initializing" : "&Null");
  auto* const type = control<QComboBox>(control_id::type);
  type->addItem(is_record_file ? "Setup Default Value" : "Set Null Characters");
  type->addItem("Setup Format");
  type->setCurrentIndex(number_of(type_entry::initial_value));
}

// The header's number of records is the item's position here, from 1.
std::size_t ClItemValueUpdateDlg::start_position() const {
  const auto position = static_cast<std::size_t>(std::max(number_of(main_.records()), 1));
  return position > main_.items.size() ? 0 : position - 1;
}

void ClItemValueUpdateDlg::show_item(std::size_t position) {
  const ClDGCol& item = *main_.items[position];
  auto* const name = control<CodePageEdit>(control_id::update_name);
  name->set_bytes(item.name);
  name->setCursorPosition(0);  // a long name is seen from its beginning
  explain_named_item();
  control<QLabel>(control_id::update_description)->setText(shown(item.description));
}

// The name may be typed: nothing is said of a name that no item has.
void ClItemValueUpdateDlg::explain_named_item() {
  const ClDGCol* const item = named_item();
  control(control_id::update_name)
      ->setToolTip(item != nullptr ? QString::fromStdString(explain_item(*item)) : QString());
}

const ClDGCol* ClItemValueUpdateDlg::named_item() const {
  const auto position =
      index_of_item(main_.items, control<CodePageEdit>(control_id::update_name)->bytes());
  return position ? main_.items[*position].get() : nullptr;
}

std::optional<std::size_t> ClItemValueUpdateDlg::named_position() {
  const std::string name = control<CodePageEdit>(control_id::update_name)->bytes();
  const auto position = name.empty() ? std::nullopt : index_of_item(main_.items, name);
  if (!position) {
    refuse(name.empty() ? error::name_not_set : error::name_not_selectable, {},
           control_id::update_name);
  }
  return position;
}

void ClItemValueUpdateDlg::enable_range(bool on) {
  enable(item_value_controls, on);
  enable(item_exceeded_controls, on);
  enable(control_id::custom_format, on);
  enable_custom_format(on && is_checked(control_id::custom_format));
  note_.refresh();
}

// What the range would give, as it is.
std::string ClItemValueUpdateDlg::preview() {
  if (!control(control_id::start)->isEnabled()) return {};
  const ClDGCol* const item = named_item();
  if (item == nullptr) return {};
  const ValuePreview values =
      preview_range(*item, main_.layout_kind(), read_range(*this), value_update_rules);
  return preview_text(values, messages_);
}

void ClItemValueUpdateDlg::enable_custom_format(bool on) {
  enable(item_format_controls, on);
  enable(control_id::add_example, on && examples_.can_add());
  enable(control_id::delete_example, on && examples_.can_delete());
}

void ClItemValueUpdateDlg::select_type(int entry) {
  if (TypeEntry{entry} != type_entry::range) return enable_range(false);
  if (const auto position = named_position()) propose_range(*main_.items[*position]);
}

void ClItemValueUpdateDlg::propose_range(const ClDGCol& item) {
  auto* const format = control<CodePageEdit>(control_id::format);
  if (format->text().isEmpty()) {
    format->set_bytes(default_format(item.attributes()));
  }
  enable_range(true);
  auto* const increment = control<CodePageEdit>(control_id::increment);
  if (increment->text().isEmpty()) increment->set_bytes(first_increment);
}

void ClItemValueUpdateDlg::add_example() {
  const std::string format = control<CodePageEdit>(control_id::format)->bytes();
  if (format.size() >= format_size_limit) {
    refuse(error::format_too_long, {}, control_id::format);
    return;
  }
  const bool exists = examples_.contains(format);
  if (exists) messages_.show(MessageKind::information, error::example_exists);
  if (const ErrorCode code = precheck_format(format).code(); code != error::none) {
    refuse(code, range_hint(code), control_id::format);
    return;
  }
  if (exists) return;
  list_.add(format);
  enable_custom_format(true);
}

void ClItemValueUpdateDlg::delete_example() {
  if (!list_.delete_selected()) {
    return messages_.show(MessageKind::information, error::example_is_default);
  }
  has_deleted_examples_ = true;
  enable_custom_format(true);
}

void ClItemValueUpdateDlg::browse_items() {
  ClSelectItemDlg dialog(this, main_.items, main_.layout_kind(), messages_,
                         control<CodePageEdit>(control_id::update_name)->bytes());
  if (dialog.run() != dialog_result::ok) return;
  show_item(dialog.position());
  control<QComboBox>(control_id::type)->setCurrentIndex(number_of(type_entry::initial_value));
  control<CodePageEdit>(control_id::format)->set_bytes({});
  clear_values(*this);
  control<CodePageEdit>(control_id::increment)->set_bytes(first_increment);
  set_checked(control_id::custom_format, false);
  enable_range(false);
  control(control_id::type)->setFocus();
}

// The user returns to the control that is to blame, where there is one.
bool ClItemValueUpdateDlg::refuse(ErrorCode code, std::string_view hint, int control_id) {
  messages_.show(MessageKind::plain, code, platform::MessageText::words(hint));
  return_to(control_id);
  return false;
}

void ClItemValueUpdateDlg::on_ok() {
  const auto position = named_position();
  if (!position) return;
  main_.select_item(*position);
  if (!store()) return;
  save_examples();
  if (!may_save(main_)) return;
  if (const ErrorCode result = main_.settings.save(quotation::none); result != error::none) {
    refuse(result, {}, 0);
    return;
  }
  end(dialog_result::ok);
}

bool ClItemValueUpdateDlg::store() {
  if (TypeEntry{control<QComboBox>(control_id::type)->currentIndex()} == type_entry::range) {
    return store_range_entry();
  }
  const ErrorCode result = set_initial_value(main_);
  return result == error::none || refuse(result, {}, control_id::type);
}

bool ClItemValueUpdateDlg::store_range_entry() {
  const RangeStored stored = store_range(main_, read_range(*this), value_update_rules);
  if (stored.code != error::none) {
    return refuse(stored.code, stored.hint, control_of(*this, stored.wrong));
  }
  if (stored.clears_values) clear_values(*this);
  return true;
}

// A failure is not worth keeping the user here for.
void ClItemValueUpdateDlg::save_examples() {
  if (!examples_.has_user_examples() && !has_deleted_examples_) return;
  examples_.save(platform::SettingsStore(platform::host_key()));
}

}  // namespace korvex
