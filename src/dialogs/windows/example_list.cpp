#include "dialogs/windows/example_list.h"

#include <QSignalBlocker>

#include "dialogs/rules/explanations.h"
#include "dialogs/widgets/shown_text.h"

namespace korvex {

void ExampleList::append(const std::string& format) {
  auto* const item = new QListWidgetItem(shown(format), &list_);
  item->setToolTip(QString::fromStdString(explain_format(format)));
}

// What the program selects is no choice of the user's.
void ExampleList::select(int row) {
  const QSignalBlocker blocker(list_);
  list_.setCurrentRow(row);
}

void ExampleList::fill() {
  for (const std::string& format : examples_.entries()) append(format);
  select(0);
}

void ExampleList::add(std::string_view format) {
  if (!examples_.add(format)) return;
  append(examples_.entries().back());
}

void ExampleList::select_last() { select(list_.count() - 1); }

bool ExampleList::delete_selected() {
  const int row = list_.currentRow();
  if (!examples_.erase(row)) return false;
  const QSignalBlocker blocker(list_);
  delete list_.takeItem(row);
  list_.setCurrentRow(row - 1);
  return true;
}

std::string ExampleList::selected() const {
  const int row = list_.currentRow();
  return row < 0 ? std::string() : examples_.entries()[static_cast<std::size_t>(row)];
}

}  // namespace korvex
