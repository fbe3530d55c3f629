#include "dialogs/windows/data_generation_dlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "control/item_settings.h"
#include "control/reconcile.h"
#include "dialogs/rules/initial_settings.h"
#include "dialogs/rules/save_checks.h"
#include "dialogs/rules/user_numbers.h"
#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/item_list_ctrl.h"
#include "dialogs/widgets/placement.h"
#include "dialogs/widgets/up_down.h"
#include "dialogs/windows/setup_format_dlg.h"
#include "platform/file.h"
#include "platform/user_interface.h"
#include "run/generate_data_file.h"
#include "run/repeat_count.h"
#include "ui_ClDataGenerationDlg.h"
#include "values/error_codes.h"

namespace korvex {

namespace {

using platform::MessageKind;

constexpr std::size_t offending_names_shown = 256;

constexpr int repeat_choice_controls[] = {control_id::repeat_group, control_id::repeats};
constexpr int repeat_number_controls[] = {control_id::level_label,   control_id::level,
                                          control_id::level_stepper, control_id::count_label,
                                          control_id::count,         control_id::count_stepper,
                                          control_id::update};

}  // namespace

ClDataGenerationDlg::ClDataGenerationDlg(QWidget* parent, const std::string& control_path,
                                         RunMode run_mode, bool is_quotation_locked)
    : FormDialog(parent), messages_(main_), is_quotation_locked_(is_quotation_locked) {
  main_.control_path = control_path;
  main_.set_run_mode(run_mode);
  Ui::ClDataGenerationDlg().setupUi(this);
  index_controls();
  list_ = control<ClItemListCtrl>(control_id::items);
  connect_commands();
}

// The list outlives what its signals reach.
ClDataGenerationDlg::~ClDataGenerationDlg() { list_->disconnect(this); }

void ClDataGenerationDlg::connect_commands() {
  on_click(control_id::delete_settings, [this] { delete_current_settings(); });
  on_click(control_id::setup, [this] { open_setup(); });
  on_click(control_id::update, [this] { update_repeat(); });
  enter_presses(control_id::items, control_id::setup);
  enter_presses(control_id::level, control_id::update);
  enter_presses(control_id::count, control_id::update);
  connect(list_, &ClItemListCtrl::doubleClicked, this,
          [this] { carry_out([this] { open_setup(); }); });
  connect(list_, &ClItemListCtrl::focus_lost, this,
          [this] { carry_out([this] { mark_current_row(); }); });
  connect(list_, &ClItemListCtrl::row_selected, this,
          [this](int row) { carry_out([this, row] { select_row(row); }); });
  connect(control<QCheckBox>(control_id::repeats), &QCheckBox::clicked, this,
          [this](bool is_ticked) { carry_out([this, is_ticked] { click_repeats(is_ticked); }); });
  connect(control<QCheckBox>(control_id::repeat_only), &QCheckBox::clicked, this,
          [this](bool is_ticked) {
            counts_repeats_only_ = is_ticked;
            carry_out([this] { refresh_counts(); });
          });
}

bool ClDataGenerationDlg::initialise() {
  const auto cursor = platform::user_interface().show_wait_cursor();
  control<UpDown>(control_id::level_stepper)->set_buddy(control<QLineEdit>(control_id::level));
  control<UpDown>(control_id::count_stepper)->set_buddy(control<QLineEdit>(control_id::count));
  if (!load()) return false;
  fill_list();
  choose_quotation();
  highest_level_ = highest_repeat_level(main_);
  refresh_counts();
  return true;
}

// Leaves room for the window that Setup opens beside the list.
void ClDataGenerationDlg::choose_place(const QRect& screen) {
  const QSize frame = size_with_frame() - size();
  const int room = (ClSetupFormatDlg::usual_size() + frame).width();
  const QWidget* const owner = parentWidget();
  const QRect middle = owner != nullptr ? owner->frameGeometry() : screen;
  move(place_with_room(size_with_frame(), middle, room, screen));
}

bool ClDataGenerationDlg::load() {
  ErrorCode result = main_.load();
  if (result == error::none) {
    show_load_warning();
    const Result<std::size_t> with_settings = reconcile(main_);
    if (main_.mismatch) return false;  // the user was told
    result = with_settings.code();
    if (with_settings && *with_settings == 0) result = give_initial_settings(main_);
  }
  if (result == error::none) return true;
  messages_.show(MessageKind::warning, result);
  return false;
}

void ClDataGenerationDlg::show_load_warning() {
  if (main_.load_error() != error::invalid_items) return;
  messages_.show(
      MessageKind::warning, main_.load_error(),
      platform::MessageText::code_page(main_.offending_names().substr(0, offending_names_shown)));
}

void ClDataGenerationDlg::fill_list() {
  model_ = std::make_unique<ItemListModel>(main_.items, generation_columns(main_.layout_kind()));
  list_->setModel(model_.get());
  show_repeat_fields();
  if (main_.items.empty()) {
    apply_row_rules(RowRules{});
  } else {
    list_->mark_row(0);
  }
  list_->setFocus();
}

void ClDataGenerationDlg::choose_quotation() {
  auto* const choice = control<QComboBox>(control_id::quotation);
  choice->setCurrentIndex(
      number_of(is_quotation_locked_ ? quotation::none : main_.settings.quotation()));
  if (is_quotation_locked_) enable({control_id::quotation, control_id::quotation_label}, false);
}

ClDGCol& ClDataGenerationDlg::current_item() {
  return *main_.items[static_cast<std::size_t>(current_row_)];
}

void ClDataGenerationDlg::select_row(int row) {
  current_row_ = row;
  apply_row_rules(row_rules(main_, current_item()));
  show_repeat_fields();
}

void ClDataGenerationDlg::move_to_row(int row) {
  if (row < 0) return;
  list_->mark_row(row);
  list_->scrollTo(model_->index(row, 0));
}

void ClDataGenerationDlg::mark_current_row() {
  if (current_row_ < 0) return;
  model_->row_changed(current_row_);
  list_->mark_row(current_row_);
}

void ClDataGenerationDlg::apply_row_rules(const std::optional<RowRules>& rules) {
  if (!rules) return;
  enable(repeat_choice_controls, rules->may_repeat);
  enable_repeat_numbers(rules->may_edit_repeat);
  enable(control_id::delete_settings, rules->may_delete);
  repeat_ = rules->fields;
}

void ClDataGenerationDlg::enable_repeat_numbers(bool on) { enable(repeat_number_controls, on); }

void ClDataGenerationDlg::show_repeat_fields() {
  set_checked(control_id::repeats, repeat_.is_repeated);
  control<QLineEdit>(control_id::level)->setText(QString::number(repeat_.level));
  control<QLineEdit>(control_id::count)->setText(QString::number(repeat_.count));
}

bool ClDataGenerationDlg::read_repeat_fields() {
  RepeatFields fields{.is_repeated = is_checked(control_id::repeats)};
  for (const auto& [id, number] :
       {std::pair{control_id::count, &fields.count}, std::pair{control_id::level, &fields.level}}) {
    auto* const edit = control<QLineEdit>(id);
    const NumberReading reading = read_repeat_number(edit->text().toStdString(), *number);
    if (reading == NumberReading::ok) continue;
    platform::user_interface().show_message(
        MessageKind::warning, platform::MessageText::words(number_complaint(reading)));
    return_to(id);
    return false;
  }
  repeat_ = fields;
  return true;
}

void ClDataGenerationDlg::open_setup() {
  if (current_row_ < 0) return;
  ClSetupFormatDlg(*this).run();
  apply_row_rules(row_rules(main_, current_item()));
  if (!repeat_.is_repeated) show_repeat_fields();
  refresh_counts();
  list_->setFocus();
}

void ClDataGenerationDlg::delete_current_settings() {
  if (current_row_ < 0) return;
  select_current_item();
  list_->setFocus();
  delete_settings(main_);
  apply_row_rules(RowRules{});
  store_repeat(main_, current_item(), repeat_);
  show_repeat_fields();
  mark_current_row();
  refresh_counts();
  list_->setFocus();
}

void ClDataGenerationDlg::click_repeats(bool is_ticked) {
  if (current_row_ < 0) return;
  enable_repeat_numbers(is_ticked);
  if (is_ticked) {
    if (highest_level_ == repeat_number_max) highest_level_ = 0;
    repeat_.level = highest_level_ + 1;
    control<QLineEdit>(control_id::level)->setText(QString::number(repeat_.level));
    control<QLineEdit>(control_id::count)->setText("1");
  } else {
    repeat_ = {};
    store_repeat(main_, current_item(), repeat_);
    apply_row_rules(row_rules(main_, current_item()));
    show_repeat_fields();
    mark_current_row();
    refresh_counts();
  }
  list_->setFocus();
}

void ClDataGenerationDlg::update_repeat() {
  if (current_row_ < 0 || !read_repeat_fields() || !repeat_.is_repeated) return;
  if (repeat_.level == 0 || repeat_.count == 0) {
    const bool is_level = repeat_.level == 0;
    messages_.show(MessageKind::warning,
                   is_level ? error::repeat_level_zero : error::repeat_count_zero);
    return return_to(is_level ? control_id::level : control_id::count);
  }
  store_repeat(main_, current_item(), repeat_);
  mark_current_row();
  highest_level_ = std::max(highest_level_, repeat_.level);
  refresh_counts();
  list_->setFocus();
}

void ClDataGenerationDlg::refresh_counts() {
  const auto count_values = [this](ClColMain& main, const FmtColRec& settings) {
    return enumeration_counts_.count(main, settings);
  };
  const RepeatCount count =
      count_data_items(main_, counts_repeats_only_, count_values).value_or(RepeatCount{});
  const std::string size = size_display(count.predicted_bytes, main_.limits().file_size_max);
  control<QLineEdit>(control_id::record_count)
      ->setText(QString::fromStdString(grouped(count.data_items)));
  control<QLineEdit>(control_id::predicted_size)->setText(QString::fromStdString(size));
}

void ClDataGenerationDlg::on_ok() {
  enumeration_counts_.forget();
  const SaveCheck check = check_before_save(main_);
  if (check.code != error::none) {
    messages_.show(MessageKind::warning, check.code, check.suffix, check.number);
    return move_to_row(check.row);
  }
  if (!check.not_null_name.empty() &&
      !messages_.ask(error::not_null_without_format, check.not_null_name)) {
    return move_to_row(check.not_null_row);
  }
  // For the items that it marks as left out; nobody sees the numbers.
  static_cast<void>(count_data_items(main_, true, [](ClColMain&, const FmtColRec&) { return 1; }));
  if (ClFmtLvlInf* level = main_.settings.current_level()) {
    level->record.repeat_flag = check.repeated_items;
  }
  if (may_save(main_)) save();
}

void ClDataGenerationDlg::save() {
  const int chosen = control<QComboBox>(control_id::quotation)->currentIndex();
  const ErrorCode result = main_.settings.save(std::max(Quotation{chosen}, quotation::none));
  switch (result) {
    case error::none:
      return main_.run_mode() == run_mode::data_file_dialog ? generate() : end(dialog_result::ok);
    case error::all_settings_deleted:
      if (messages_.ask(result)) {
        main_.settings.disregard_protection();
        main_.settings.delete_file();
      }
      return end(dialog_result::ok);
    case error::no_format_for_item:
      return end(dialog_result::cancel);
    case error::disk_full:
      return messages_.show(MessageKind::plain, result);
    default:
      messages_.show(MessageKind::plain, result);
      return end(dialog_result::cancel);
  }
}

void ClDataGenerationDlg::generate() {
  ErrorCode result = main_.write_temporary_control_file();
  if (result == error::none) result = generate_from(main_.control_path);
  if (result != error::none) messages_.show(MessageKind::plain, result);
  end(result == error::none ? dialog_result::ok : dialog_result::cancel);
}

// The run itself turns every failure into a code.
ErrorCode ClDataGenerationDlg::generate_from(const std::string& control_path) {
  ClGenerateDataFile generator;
  generator.main.control_path = control_path;
  generator.parent = reinterpret_cast<void*>(winId());
  const ErrorCode result = generator.run();
  platform::remove_file(control_path);
  return result;
}

void ClDataGenerationDlg::on_cancel() {
  list_->setFocus();
  end(dialog_result::cancel);
}

}  // namespace korvex
