#include "dialogs/windows/reference_model.h"

#include <QComboBox>
#include <QCompleter>

#include "control/item_settings.h"
#include "dialogs/widgets/shown_text.h"

namespace korvex {

ReferenceModel::ReferenceModel(const ClColMain& main, const Messages& messages, QObject* parent)
    : QAbstractListModel(parent), main_(main), messages_(messages) {}

int ReferenceModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(main_.items.size());
}

QVariant ReferenceModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return shown(main_.items[static_cast<std::size_t>(index.row())]->name);
    case Qt::ToolTipRole: {
      const ErrorCode code = check_copy(main_, static_cast<std::size_t>(index.row()));
      return code == error::none ? QVariant() : QString::fromStdString(messages_.text(code).utf8());
    }
    default:
      return {};
  }
}

Qt::ItemFlags ReferenceModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  constexpr Qt::ItemFlags greyed = Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return check_copy(main_, static_cast<std::size_t>(index.row())) == error::none
             ? greyed | Qt::ItemIsEnabled
             : greyed;
}

void offer_references(QComboBox& box, const ClColMain& main, const Messages& messages) {
  box.setModel(new ReferenceModel(main, messages, &box));
  auto* const finder = new QCompleter(box.model(), &box);
  finder->setFilterMode(Qt::MatchContains);
  finder->setCaseSensitivity(Qt::CaseInsensitive);
  box.setCompleter(finder);
}

std::optional<std::size_t> chosen_reference(const QComboBox& box) {
  int chosen = box.currentIndex();
  if (chosen < 0 || box.itemText(chosen) != box.currentText()) {
    chosen = box.findText(box.currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive);
  }
  return chosen < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(chosen));
}

}  // namespace korvex
