#pragma once

#include <QAbstractListModel>

#include "control/col_main.h"
#include "dialogs/rules/messages.h"

class QComboBox;

namespace korvex {

// The names of all items, to choose one whose settings the current item takes over. What would be
// refused cannot be chosen, and its tooltip says why. Asks for everything whenever it is shown, so
// it never falls out of date with the settings. Does not own what it shows.
class ReferenceModel : public QAbstractListModel {
 public:
  ReferenceModel(const ClColMain& main, const Messages& messages, QObject* parent);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  const ClColMain& main_;
  const Messages& messages_;
};

// Lets a box that is typed into offer the names. Typing finds those that hold what was typed, but a
// name is taken as it is typed.
void offer_references(QComboBox& box, const ClColMain& main, const Messages& messages);

// The place of the item that the box names: the one chosen from the list, also where names look
// alike, else the first one that is shown like what was typed; -1 for none.
std::optional<std::size_t> chosen_reference(const QComboBox& box);

}  // namespace korvex
