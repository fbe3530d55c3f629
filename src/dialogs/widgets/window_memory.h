#pragma once

#include <QSize>
#include <QString>
#include <optional>
#include <vector>

namespace korvex {

// What a window keeps from one time to the next, in the settings store: its size, and the widths of
// its list's columns. What is missing there, or makes no sense, counts as never kept.
class WindowMemory {
 public:
  explicit WindowMemory(const QString& window);

  std::optional<QSize> size() const;
  std::vector<int> column_widths() const;

  // A failure is not worth a message: the window will open as it did.
  void keep_size(const QSize& size) const;
  void keep_column_widths(const std::vector<int>& widths) const;

 private:
  std::string size_name_;
  std::string widths_name_;
};

}  // namespace korvex
