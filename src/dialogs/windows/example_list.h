#pragma once

#include <QListWidget>

#include "dialogs/rules/format_examples.h"

namespace korvex {

// Shows format examples in a list box and keeps the two alike. Does not own them.
class ExampleList {
 public:
  ExampleList(QListWidget& list, FormatExamples& examples) : list_(list), examples_(examples) {}

  // Shows all of them, the first one selected.
  void fill();

  // Appends an example that was checked.
  void add(std::string_view format);

  void select_last();

  // Deletes the selected example and selects the one before it. False for a default example and for
  // no selection.
  bool delete_selected();

  // The selected example; empty without a selection.
  std::string selected() const;

 private:
  void append(const std::string& format);
  void select(int row);

  QListWidget& list_;
  FormatExamples& examples_;
};

}  // namespace korvex
