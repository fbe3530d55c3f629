#include "dialogs/widgets/window_memory.h"

#include <QStringList>
#include <algorithm>

#include "platform/settings_store.h"

namespace korvex {

namespace {

using platform::SettingsStore;
using platform::StoreStatus;

constexpr int longest_side = 32767;  // pixels, of a window and of a column

// Whole numbers between the separators; nothing when one of them is none or is out of range.
std::vector<int> read_lengths(const std::string& name, QChar separator) {
  std::string value;
  if (SettingsStore(platform::host_key()).read(name, value) != StoreStatus::ok) return {};
  std::vector<int> lengths;
  for (const QString& part : QString::fromStdString(value).split(separator)) {
    const int length = part.toInt();
    if (length < 1 || length > longest_side) return {};
    lengths.push_back(length);
  }
  return lengths;
}

void write_lengths(const std::string& name, const std::vector<int>& lengths, QChar separator) {
  QStringList parts;
  for (const int length : lengths) parts << QString::number(length);
  SettingsStore(platform::host_key()).write(name, parts.join(separator).toStdString());
}

constexpr QChar between_sides = u'x';
constexpr QChar between_columns = u',';

}  // namespace

WindowMemory::WindowMemory(const QString& window)
    : size_name_(window.toStdString() + "Size"), widths_name_(window.toStdString() + "Columns") {}

std::optional<QSize> WindowMemory::size() const {
  const std::vector<int> sides = read_lengths(size_name_, between_sides);
  if (sides.size() != 2) return std::nullopt;
  return QSize(sides[0], sides[1]);
}

std::vector<int> WindowMemory::column_widths() const {
  return read_lengths(widths_name_, between_columns);
}

void WindowMemory::keep_size(const QSize& size) const {
  write_lengths(size_name_, {size.width(), size.height()}, between_sides);
}

void WindowMemory::keep_column_widths(const std::vector<int>& widths) const {
  write_lengths(widths_name_, widths, between_columns);
}

}  // namespace korvex
