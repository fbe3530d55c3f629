#include "dialogs/windows/window_icon.h"

#include <QPainter>
#include <QPixmap>

namespace korvex {

namespace {

constexpr int sizes[] = {16, 24, 32, 48, 64, 128};

// Between light and dark, so that it is seen on the title bars of both.
const QColor sheet(250, 250, 250);
const QColor head(32, 112, 176);
const QColor line(96, 128, 160);

constexpr int columns = 3;
constexpr int rows = 4;  // the first is the head

QPixmap drawn(int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  const int unit = size / 16;
  const QRect table = pixmap.rect().adjusted(unit, unit, -unit, -unit);
  const QRect top(table.left(), table.top(), table.width(), table.height() / rows);
  painter.fillRect(table, sheet);
  painter.fillRect(top, head);
  painter.setPen(QPen(line, unit, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRect(table.adjusted(0, 0, -1, -1));
  for (int row = 1; row < rows; ++row) {
    const int y = table.top() + row * table.height() / rows;
    painter.drawLine(table.left(), y, table.right(), y);
  }
  for (int column = 1; column < columns; ++column) {
    const int x = table.left() + column * table.width() / columns;
    painter.drawLine(x, top.bottom(), x, table.bottom());
  }
  return pixmap;
}

}  // namespace

QIcon window_icon() {
  QIcon icon;
  for (const int size : sizes) icon.addPixmap(drawn(size));
  return icon;
}

}  // namespace korvex
