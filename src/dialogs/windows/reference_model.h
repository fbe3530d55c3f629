#pragma once

#include <QAbstractListModel>

#include "control/col_main.h"
#include "dialogs/rules/messages.h"

namespace korvex {

// The names of all items, to choose one whose settings the current item takes over. What would be
// refused cannot be chosen, and its tooltip says why. Asks for everything whenever it is shown, so
// it never lags behind the settings. Does not own what it shows.
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

}  // namespace korvex
