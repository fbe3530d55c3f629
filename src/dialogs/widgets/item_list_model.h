#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <string>
#include <vector>

#include "control/dg_col.h"

namespace korvex {

// One column of a list of items.
struct ItemColumn {
  std::string header;
  int share;                      // of the list's width, in units of the sum of all shares
  std::string (*text)(ClDGCol&);  // code page 932
};

// The items with all their settings, or just their names and descriptions.
std::vector<ItemColumn> generation_columns(LayoutKind layout_kind);
std::vector<ItemColumn> selection_columns(LayoutKind layout_kind);

// Shows the items of a control file, a row each; holds no text of its own but asks for it whenever
// a row is drawn. Does not own the items, which must outlive it and keep their number.
class ItemListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  // Beside Qt's own roles: the text of a cell as bytes (QByteArray), and of a column its share.
  static constexpr int bytes_role = Qt::UserRole;
  static constexpr int share_role = Qt::UserRole + 1;

  ItemListModel(ClDGColList& items, std::vector<ItemColumn> columns, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

  // Has the row drawn again.
  void row_changed(int row);

 private:
  ClDGColList& items_;
  std::vector<ItemColumn> columns_;
};

}  // namespace korvex
