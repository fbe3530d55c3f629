#pragma once

#include <cstdint>
#include <string>

#include "dialogs/rules/messages.h"
#include "dialogs/widgets/form_dialog.h"
#include "dialogs/widgets/item_list_model.h"

namespace korvex {

class ClItemListCtrl;

// Picks an item by its name or from the list of all items, which follows the name as it is typed.
// Changes no item. run() answers 1 for OK, after which position() is the item's, or 2 for Cancel,
// at once when there are no items.
class ClSelectItemDlg : public FormDialog {
 public:
  // `name` is shown first. Items and messages must outlive the dialog.
  ClSelectItemDlg(QWidget* parent, ClDGColList& items, LayoutKind layout_kind,
                  const Messages& messages, std::string name);

  std::size_t position() const { return static_cast<std::size_t>(position_); }

 protected:
  bool initialise() override;
  void on_ok() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void fill_labels();
  int last_position_of_name() const;
  void take_row(int row);
  void show_name();
  void refuse(ErrorCode code);
  void find(const QString& text);

  ClDGColList& items_;
  const Messages& messages_;
  ItemListModel model_;
  ClItemListCtrl* list_;
  LayoutKind layout_kind_;
  std::string name_;
  int position_ = -1;  // its row, -1 without one
};

}  // namespace korvex
