#include "dialogs/windows/select_item_dlg.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <algorithm>

#include "dialogs/rules/setup_fields.h"
#include "dialogs/widgets/code_page_edit.h"
#include "dialogs/widgets/control_ids.h"
#include "dialogs/widgets/item_list_ctrl.h"
#include "platform/user_interface.h"
#include "ui_ClSelectItemDlg.h"
#include "values/error_codes.h"
#include "values/records.h"

namespace korvex {

ClSelectItemDlg::ClSelectItemDlg(QWidget* parent, ClDGColList& items, LayoutKind layout_kind,
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
  auto* const name_edit = control<CodePageEdit>(control_id::selected_name);
  connect(name_edit, &QLineEdit::textEdited, this, [this](const QString& text) { find(text); });
  name_edit->installEventFilter(this);
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
  position_ = name_.empty() ? 0 : last_position_of_name();
  {
    const QSignalBlocker before_any_choice(list_);
    list_->mark_row(std::max(position_, 0));
  }
  if (position_ < 0) return true;
  if (name_.empty()) take_row(0);
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

// Marks the item that is most like what is being typed, which stays as it is typed.
void ClSelectItemDlg::find(const QString& text) {
  if (text.isEmpty()) return;
  for (const Qt::MatchFlags like :
       {Qt::MatchExactly | Qt::MatchCaseSensitive, Qt::MatchFlags(Qt::MatchStartsWith),
        Qt::MatchFlags(Qt::MatchContains)}) {
    const auto found = model_.match(model_.index(0, 0), Qt::DisplayRole, text, 1, like);
    if (found.isEmpty()) continue;
    const QSignalBlocker no_choice(list_);
    position_ = found.front().row();
    return list_->mark_row(position_);
  }
}

// Up and Down go through the list from the name too: first they take the item that was found.
bool ClSelectItemDlg::eventFilter(QObject* watched, QEvent* event) {
  auto* const name_edit = control<CodePageEdit>(control_id::selected_name);
  if (watched != name_edit || event->type() != QEvent::KeyPress) {
    return FormDialog::eventFilter(watched, event);
  }
  const int key = static_cast<const QKeyEvent*>(event)->key();
  if (key != Qt::Key_Up && key != Qt::Key_Down) return FormDialog::eventFilter(watched, event);
  const int marked = list_->current_row();
  const bool is_taken = items_[static_cast<std::size_t>(marked)]->name == name_edit->bytes();
  const int step = !is_taken ? 0 : key == Qt::Key_Up ? -1 : 1;
  const int row = std::clamp(marked + step, 0, model_.rowCount() - 1);
  list_->mark_row(row);
  take_row(row);
  return true;
}

void ClSelectItemDlg::on_ok() {
  const std::string wanted = control<CodePageEdit>(control_id::selected_name)->bytes();
  if (wanted.empty()) return refuse(error::name_not_set);
  const auto position = index_of_item(items_, wanted);
  if (!position) return refuse(error::no_such_name);
  position_ = static_cast<int>(*position);
  end(dialog_result::ok);
}

void ClSelectItemDlg::refuse(ErrorCode code) {
  messages_.show(platform::MessageKind::plain, code);
  return_to(control_id::selected_name);
}

}  // namespace korvex
