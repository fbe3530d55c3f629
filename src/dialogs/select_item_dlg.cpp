#include "dialogs/select_item_dlg.h"

#include <QSignalBlocker>

#include "dialogs/code_page_edit.h"
#include "dialogs/control_ids.h"
#include "dialogs/item_list_ctrl.h"
#include "format/error_codes.h"
#include "format/records.h"
#include "platform/user_interface.h"
#include "ui_ClSelectItemDlg.h"

namespace korvex {

ClSelectItemDlg::ClSelectItemDlg(QWidget* parent, ClDGColList& items, std::int32_t layout_kind,
                                 const Messages& messages, std::string name)
    : FormDialog(parent),
      items_(items),
      messages_(messages),
      model_(items, selection_columns(layout_kind)),
      layout_kind_(layout_kind),
      name_(std::move(name)) {
  Ui::ClSelectItemDlg().setupUi(this);
  index_controls();
  list_ = control<ClItemListCtrl>(control_id::selection_items);
  // The row that is marked at the start may be the wanted one.
  connect(list_, &ClItemListCtrl::clicked, this,
          [this](const QModelIndex& index) { take_row(index.row()); });
  connect(list_, &ClItemListCtrl::doubleClicked, this, [this](const QModelIndex& index) {
    take_row(index.row());
    accept();
  });
  connect(list_, &ClItemListCtrl::focus_lost, this, [this] { list_->mark_row(position_); });
  connect(list_, &ClItemListCtrl::row_selected, this, [this](int row) { take_row(row); });
}

void ClSelectItemDlg::fill_labels() {
  const bool is_record_file = layout_kind_ == layout_kind::record_file;
  setWindowTitle(is_record_file ? "Select Item" : "Select Column");
  set_label(control_id::selected_name_label,
            is_record_file ? "Select &Item Name" : "Select &Column Name");
  set_label(control_id::selection_group, is_record_file ? "&Select Item" : "&Select Column");
}

bool ClSelectItemDlg::initialise() {
  if (items_.empty()) return false;
  const auto cursor = platform::user_interface().show_wait_cursor();
  fill_labels();
  show_name();
  list_->setModel(&model_);
  {
    const QSignalBlocker before_any_choice(list_);
    list_->setAutoScroll(false);  // or the list would go back to this row when it is shown
    list_->mark_row(0);
    list_->setAutoScroll(true);
  }
  if (name_.empty()) {
    take_row(0);
  } else {
    position_ = last_position_of_name();
    if (position_ < 0) return true;
    list_->scrollTo(model_.index(position_, 0));
  }
  list_->setFocus();
  return true;
}

int ClSelectItemDlg::last_position_of_name() const {
  for (std::size_t place = items_.size(); place > 0; --place) {
    if (items_[place - 1]->name == name_) return static_cast<int>(place - 1);
  }
  return -1;
}

void ClSelectItemDlg::take_row(int row) {
  position_ = row;
  name_ = items_[static_cast<std::size_t>(row)]->name;
  show_name();
}

// A long name is seen from its beginning.
void ClSelectItemDlg::show_name() {
  auto* const edit = control<CodePageEdit>(control_id::selected_name);
  edit->set_bytes(name_);
  edit->setCursorPosition(0);
}

void ClSelectItemDlg::on_ok() {
  const std::string wanted = control<CodePageEdit>(control_id::selected_name)->bytes();
  if (wanted.empty()) return refuse(error::name_not_set);
  for (std::size_t place = 0; place < items_.size(); ++place) {
    if (items_[place]->name != wanted) continue;
    position_ = static_cast<int>(place);
    return end(dialog_result::ok);
  }
  refuse(error::no_such_name);
}

void ClSelectItemDlg::refuse(std::int32_t code) {
  messages_.show(platform::MessageKind::plain, code);
  return_to(control_id::selected_name);
}

}  // namespace korvex
