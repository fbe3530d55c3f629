#pragma once

#include <QTreeView>
#include <vector>

namespace korvex {

// The list of items (an ItemListModel): one row is selected, and stays so, with and without focus.
//
// Columns get their shares of the list's width in whole units, again whenever the list is resized,
// until the user drags a column's edge: from then on the widths are the user's. Texts that are too
// wide end in three dots.
class ClItemListCtrl : public QTreeView {
  Q_OBJECT

 public:
  explicit ClItemListCtrl(QWidget* parent = nullptr);

  void setModel(QAbstractItemModel* model) override;

  void apply_column_widths();

  // Makes the row the current and selected one and has it drawn again. A row that the list does not
  // have changes nothing.
  void mark_row(int row);

  // How much of a column is seen when the list is scrolled to it.
  int seen_width(int column) const;

  // The widths that the user made; none before that. Setting takes widths of all columns only.
  std::vector<int> user_widths() const;
  void set_user_widths(const std::vector<int>& widths);

  // -1 before the first row was marked or chosen.
  int current_row() const { return currentIndex().row(); }

 signals:
  // The row has become current and selected.
  void row_selected(int row);
  void focus_lost();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  void on_section_resized();
  void fit_header_height();

  bool is_sizing_columns_ = false;
  bool has_user_widths_ = false;
};

}  // namespace korvex
