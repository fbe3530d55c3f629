#include "dialogs/widgets/item_list_model.h"

#include <QByteArray>
#include <utility>

#include "dialogs/widgets/shown_text.h"
#include "values/records.h"

namespace korvex {

namespace {

std::string item_header(LayoutKind kind) {
  return kind == layout_kind::record_file ? "Item" : "Column";
}

std::string name(ClDGCol& item) { return item.name; }

std::string description(ClDGCol& item) { return item.description; }

std::string repeat_number(ClDGCol& item, std::int32_t number) {
  return item.display().is_repeated ? std::to_string(number) : std::string();
}

}  // namespace

std::vector<ItemColumn> generation_columns(LayoutKind layout_kind) {
  return {
      {item_header(layout_kind), 3, name},
      {"Desc", 3, description},
      {"Format", 3, [](ClDGCol& item) { return item.display().generation_text; }},
      {"Start Value", 3, [](ClDGCol& item) { return item.display().start; }},
      {"End Value", 3, [](ClDGCol& item) { return item.display().end; }},
      {"Increment Value", 2, [](ClDGCol& item) { return item.display().increment; }},
      {"Level", 2,
       [](ClDGCol& item) { return repeat_number(item, number_of(item.display().repeat_level)); }},
      {"Repeat Value", 2,
       [](ClDGCol& item) { return repeat_number(item, item.display().repeat_count); }},
  };
}

std::vector<ItemColumn> selection_columns(LayoutKind layout_kind) {
  return {{item_header(layout_kind), 6, name}, {"Desc", 4, description}};
}

ItemListModel::ItemListModel(ClDGColList& items, std::vector<ItemColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), items_(items), columns_(std::move(columns)) {}

int ItemListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

int ItemListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ItemListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || (role != Qt::DisplayRole && role != bytes_role)) return {};
  const ItemColumn& column = columns_[static_cast<std::size_t>(index.column())];
  const std::string bytes = column.text(*items_[static_cast<std::size_t>(index.row())]);
  if (role == bytes_role) return QByteArray::fromStdString(bytes);
  return shown(bytes);
}

QVariant ItemListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ItemColumn& column = columns_[static_cast<std::size_t>(section)];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:  // a narrow column cuts its header
      return QString::fromStdString(column.header);
    case share_role:
      return column.share;
    default:
      return {};
  }
}

void ItemListModel::row_changed(int row) {
  if (row < 0 || row >= rowCount()) return;
  emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

}  // namespace korvex
