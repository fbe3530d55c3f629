#include "dialogs/windows/setup_format_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QShortcut>
#include <QToolTip>
#include <algorithm>

#include "control/item_settings.h"
#include "dialogs/rules/explanations.h"
#include "dialogs/rules/store_range.h"
#include "dialogs/rules/value_lists.h"
#include "dialogs/rules/value_preview.h"
#include "dialogs/widgets/code_page_edit.h"
#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/placement.h"
#include "dialogs/widgets/shown_text.h"
#include "dialogs/widgets/up_down.h"
#include "dialogs/windows/data_generation_dlg.h"
#include "dialogs/windows/range_controls.h"
#include "dialogs/windows/reference_model.h"
#include "dialogs/windows/select_format_example_dlg.h"
#include "platform/path.h"
#include "platform/user_interface.h"
#include "ui_ClSetupFormatDlg.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

using platform::MessageKind;

struct Label {
  int id;
  const char* item;
  const char* column;
};

constexpr Label labels[] = {
    {control_id::item_group, "Item Information", "Column Information"},
    {control_id::item_name_caption, "Item:", "Column:"},
    {control_id::previous_item, "Pre&vious Item", "F&ront Column"},
    {control_id::next_item, "&Next Item", "Ne&xt Column"},
    {control_id::exceeded_initialize, "&Initializing", "&Null"},
    {control_id::reference_label, "Re&ference Item :", "Re&ference Column :"},
};

constexpr Label types[] = {
    {0, "Setup Default Value", "Set Null Characters"},
    {0, "Setup Format", "Setup Format"},
    {0, "Reference Other Item", "Reference Other Column"},
    {0, "Setup enumeration type", "Setup enumeration type"},
};

constexpr int enumeration_controls[] = {control_id::enumeration_label, control_id::enumeration_name,
                                        control_id::select_file};
constexpr int reference_controls[] = {control_id::reference_label, control_id::reference};
constexpr int format_controls[] = {control_id::format_label, control_id::format,
                                   control_id::select_example};
constexpr int value_controls[] = {control_id::start,
                                  control_id::start_label,
                                  control_id::end,
                                  control_id::end_label,
                                  control_id::increment,
                                  control_id::increment_label,
                                  control_id::increment_stepper};
constexpr int exceeded_controls[] = {control_id::exceeded_group, control_id::exceeded_initialize,
                                     control_id::exceeded_repeat};

}  // namespace

ClSetupFormatDlg::ClSetupFormatDlg(ClDataGenerationDlg& parent)
    : FormDialog(&parent), parent_(parent), note_(*this, [this] { return preview(); }) {
  Ui::ClSetupFormatDlg().setupUi(this);
  index_controls();
  auto* const reference = control<QComboBox>(control_id::reference);
  reference->setLineEdit(new CodePageEdit(reference));
  reference->lineEdit()->setAccessibleName("Name of the reference");
  connect_commands();
}

QSize ClSetupFormatDlg::usual_size() {
  QDialog form;
  Ui::ClSetupFormatDlg().setupUi(&form);
  return size_as_left(form);
}

void ClSetupFormatDlg::connect_commands() {
  on_click(control_id::select_example, [this] { select_example(); });
  on_click(control_id::browse_file, [this] { browse_file(); });
  on_click(control_id::next_item, [this] { move_by(1); });
  on_click(control_id::previous_item, [this] { move_by(-1); });
  on_click(control_id::select_file, [this] { select_file(); });
  // Confirming the entry that is selected already counts too.
  connect(control<QComboBox>(control_id::type), &QComboBox::activated, this,
          [this] { carry_out([this] { confirm_selected_type(); }); });
  connect(control<QCheckBox>(control_id::custom_format), &QCheckBox::clicked, this,
          [this] { carry_out([this] { apply_enablement(); }); });
  on_click(control_id::delete_format, [this] { delete_settings(); });
  on_click(control_id::store_format, [this] { setup(); });
  const auto on_keys = [this](Qt::Key key, int rows) {
    auto* const shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), this);
    connect(shortcut, &QShortcut::activated, this,
            [this, rows] { carry_out([this, rows] { move_by(rows); }); });
  };
  note_.watch({control_id::type, control_id::reference, control_id::format, control_id::start,
               control_id::end, control_id::increment});
  on_keys(Qt::Key_PageUp, -1);
  on_keys(Qt::Key_PageDown, 1);
}

bool ClSetupFormatDlg::initialise() {
  control<UpDown>(control_id::increment_stepper)
      ->set_buddy(control<QLineEdit>(control_id::increment));
  fill_labels();
  parent_.select_current_item();
  offer_references(*control<QComboBox>(control_id::reference), parent_.main(), parent_.messages());
  show_item();
  control(control_id::type)->setFocus();
  return true;
}

// The list shows what has been stored, and which item is next.
void ClSetupFormatDlg::choose_place(const QRect& screen) {
  const QWidget* const list = parent_.control(control_id::items);
  const QRect seen(list->mapToGlobal(QPoint()), list->size());
  move(place_beside(size_with_frame(), seen, screen));
}

void ClSetupFormatDlg::fill_labels() {
  const bool is_record_file = parent_.main().layout_kind() == layout_kind::record_file;
  const auto worded = [&](const Label& label) {
    return is_record_file ? label.item : label.column;
  };
  for (const Label& label : labels) set_label(label.id, worded(label));
  for (const Label& type : types) control<QComboBox>(control_id::type)->addItem(worded(type));
}

ClDGCol& ClSetupFormatDlg::item() {
  return *parent_.main().items[static_cast<std::size_t>(parent_.current_row())];
}

void ClSetupFormatDlg::show_item() {
  parent_.select_current_item();
  auto* const name = control<CodePageEdit>(control_id::item_name);
  name->set_bytes(item().name);
  name->setToolTip(QString::fromStdString(explain_item(item())));
  control<CodePageEdit>(control_id::item_description)->set_bytes(item().description);
  fields_ = fields_of(item().display(), fields_);
  show_fields();
  apply_enablement();
}

void ClSetupFormatDlg::show_fields() {
  control<QComboBox>(control_id::type)->setCurrentIndex(number_of(fields_.type_index));
  auto* const reference = control<QComboBox>(control_id::reference);
  const auto source = index_of_item(parent_.main().items, fields_.reference);
  reference->setCurrentIndex(source ? static_cast<int>(*source) : -1);
  reference->setEditText(shown(fields_.reference));
  reference->lineEdit()->setCursorPosition(0);
  show_enumeration_name();
  control<CodePageEdit>(control_id::format)->set_bytes(fields_.format);
  control<CodePageEdit>(control_id::start)->set_bytes(fields_.start);
  control<CodePageEdit>(control_id::end)->set_bytes(fields_.end);
  control<CodePageEdit>(control_id::increment)->set_bytes(fields_.increment);
  set_checked(control_id::custom_format, fields_.custom);
  set_exceeded_choice(fields_.exceeded);
}

void ClSetupFormatDlg::read_controls() {
  const auto bytes = [this](int id) { return control<CodePageEdit>(id)->bytes(); };
  fields_.type_index = TypeEntry{control<QComboBox>(control_id::type)->currentIndex()};
  fields_.format = bytes(control_id::format);
  fields_.start = bytes(control_id::start);
  fields_.end = bytes(control_id::end);
  fields_.increment = bytes(control_id::increment);
  fields_.custom = is_checked(control_id::custom_format);
  fields_.exceeded = exceeded_choice();

  const auto* const reference = control<QComboBox>(control_id::reference);
  const auto source = chosen_reference(*reference);
  fields_.reference = source ? parent_.main().items[*source]->name
                             : static_cast<CodePageEdit*>(reference->lineEdit())->bytes();
}

void ClSetupFormatDlg::apply_enablement() {
  fields_.type_index = TypeEntry{control<QComboBox>(control_id::type)->currentIndex()};
  fields_.custom = is_checked(control_id::custom_format);
  const bool has_name = !control<QLineEdit>(control_id::enumeration_name)->text().isEmpty();
  const SetupEnablement on = enablement(fields_, item().display().generation_type, has_name);
  enable(control_id::delete_format, on.remove);
  enable(control_id::store_format, on.setup);
  enable(enumeration_controls, on.enumeration);
  if (on.browse) enable(control_id::browse_file, *on.browse);
  enable(reference_controls, on.reference);
  enable(control_id::custom_format, on.custom);
  enable(format_controls, on.format);
  enable(value_controls, on.values);
  enable(exceeded_controls, on.exceeded);
  note_.refresh();
}

// What the controls would give, as they are.
std::string ClSetupFormatDlg::preview() {
  const ClColMain& main = parent_.main();
  ValuePreview values;
  switch (TypeEntry{control<QComboBox>(control_id::type)->currentIndex()}) {
    case type_entry::range:
      values = preview_range(item(), main.layout_kind(), read_range(*this), setup_format_rules);
      break;
    case type_entry::reference:
      if (const auto source = chosen_reference(*control<QComboBox>(control_id::reference))) {
        values = preview_reference(main, *source);
      }
      break;
    case type_entry::enumeration:
      if (!control<QLineEdit>(control_id::enumeration_name)->text().isEmpty()) {
        values = preview_list(main, fields_.enumeration_path);
      }
      break;
    default:
      break;
  }
  return preview_text(values, parent_.messages());
}

void ClSetupFormatDlg::confirm_selected_type() {
  read_controls();
  confirm_type(fields_, item());
  show_fields();
  apply_enablement();
}

void ClSetupFormatDlg::select_example() {
  read_controls();
  if (fields_.type_index != type_entry::range) return;
  ClSelectFormatExampleDlg dialog(this, parent_.messages(), fields_.format);
  if (dialog.run() != dialog_result::ok || dialog.format().empty()) return;
  control<CodePageEdit>(control_id::format)->set_bytes(dialog.format());
}

void ClSetupFormatDlg::select_file() {
  const std::optional<std::string> path = ask_for_enumeration_file(parent_.main().work_folder());
  if (!path) return;
  fields_.enumeration_path = *path;
  show_enumeration_file();
  apply_enablement();
}

void ClSetupFormatDlg::show_enumeration_file() {
  fields_.enumeration_name = platform::base_name(fields_.enumeration_path);
  show_enumeration_name();
}

void ClSetupFormatDlg::show_enumeration_name() {
  auto* const edit = control<QLineEdit>(control_id::enumeration_name);
  edit->setText(shown_path(fields_.enumeration_name));
  edit->setCursorPosition(0);  // a long name is seen from its beginning
  const bool has_name = !fields_.enumeration_name.empty();
  edit->setToolTip(has_name ? tooltip_text(shown_path(fields_.enumeration_path)) : QString());
}

void ClSetupFormatDlg::browse_file() {
  open_enumeration_file(fields_.enumeration_path, parent_.messages());
}

void ClSetupFormatDlg::delete_settings() {
  parent_.delete_current_settings();
  show_item();
  setFocus();
}

void ClSetupFormatDlg::setup() {
  if (!store()) return;
  apply_enablement();
  tell_stored();
}

// The window stays as it was: a word at the button says that something has happened.
void ClSetupFormatDlg::tell_stored() {
  auto* const button = control<QPushButton>(control_id::store_format);
  const QString text = tooltip_text("Stored: " + shown(item().name));
  const QPoint above(0, -2 * button->height());
  QToolTip::showText(button->mapToGlobal(above), text, button);
}

// Whether the next step may follow: nothing was changed, the user gave the change up, or it was
// stored.
bool ClSetupFormatDlg::settle_change() {
  read_controls();
  parent_.select_current_item();
  if (!is_changed(fields_, parent_.main())) return true;
  return !parent_.messages().ask(error::save_change) || store();
}

void ClSetupFormatDlg::move_by(int rows) {
  if (!settle_change()) return;
  const int last = static_cast<int>(parent_.main().items.size()) - 1;
  parent_.move_to_row(std::clamp(parent_.current_row() + rows, 0, last));
  show_item();
}

void ClSetupFormatDlg::on_ok() {
  if (store()) end(dialog_result::ok);
}

void ClSetupFormatDlg::on_cancel() {
  if (settle_change()) end(dialog_result::cancel);
}

bool ClSetupFormatDlg::store() {
  read_controls();
  parent_.select_current_item();
  bool is_stored = true;
  switch (fields_.type_index) {
    case type_entry::initial_value:
      is_stored = store_initial_value();
      break;
    case type_entry::range:
      is_stored = store_range_entry();
      break;
    case type_entry::reference:
      is_stored = store_reference();
      break;
    case type_entry::enumeration:
      is_stored = store_enumeration();
      break;
    default:
      break;
  }
  if (is_stored) parent_.mark_current_row();
  return is_stored;
}

// The user returns to the control that is to blame.
bool ClSetupFormatDlg::refuse(const Refusal& refusal, int control_id) {
  parent_.messages().show(MessageKind::warning, refusal.code, refusal.suffix, refusal.number);
  return_to(control_id);
  return false;
}

bool ClSetupFormatDlg::store_initial_value() {
  const ErrorCode result = set_initial_value(parent_.main());
  return result == error::none || refuse({result}, control_id::type);
}

bool ClSetupFormatDlg::store_range_entry() {
  const RangeStored stored = store_range(parent_.main(), read_range(*this), setup_format_rules);
  if (stored.code != error::none)
    return refuse({stored.code, platform::MessageText::words(stored.hint)},
                  control_of(*this, stored.wrong));
  if (stored.clears_values) clear_values(*this);
  show_stored_action();
  return true;
}

// No choice is stored as repeating.
void ClSetupFormatDlg::show_stored_action() {
  set_exceeded_choice(item().display().exceeded_action);
}

bool ClSetupFormatDlg::store_reference() {
  const auto source = chosen_reference(*control<QComboBox>(control_id::reference));
  if (!source) {
    const bool is_named = !fields_.reference.empty();
    return refuse({is_named ? error::no_such_reference : error::reference_not_set},
                  control_id::reference);
  }
  const ErrorCode result = copy_settings(parent_.main(), *source);
  return result == error::none || refuse({result}, control_id::reference);
}

bool ClSetupFormatDlg::store_enumeration() {
  const ExceededAction action = is_checked(control_id::exceeded_initialize)
                                    ? exceeded_action::initialize
                                    : exceeded_action::repeat;
  const EnumerationStored stored =
      choose_enumeration(parent_.main(), fields_.enumeration_path, action);
  if (stored.code == error::none) {
    show_enumeration_file();
    show_stored_action();
    return true;
  }
  refuse({stored.code, stored.suffix, stored.number}, control_id::select_file);
  if (stored.leaves_settings) parent_.delete_current_settings();
  return false;
}

}  // namespace korvex
