#pragma once

#include <QComboBox>

namespace korvex {

// A list that says when the user opens it, before it does.
class DropDownList : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;

  void showPopup() override {
    emit opening();
    QComboBox::showPopup();
  }

 signals:
  void opening();
};

}  // namespace korvex
