#include "dialogs/widgets/placement.h"

#include <algorithm>

namespace korvex {

namespace {

QPoint last_place(const QSize& window, const QRect& screen) {
  return {std::max(screen.left(), screen.right() + 1 - window.width()),
          std::max(screen.top(), screen.bottom() + 1 - window.height())};
}

}  // namespace

QPoint place_beside(const QSize& window, const QRect& seen, const QRect& screen) {
  const auto [last_x, last_y] = last_place(window, screen);
  const int level_x = std::clamp(seen.left(), screen.left(), last_x);
  const int level_y = std::clamp(seen.top(), screen.top(), last_y);
  const int right_of = seen.right() + 1;
  const int left_of = seen.left() - window.width();
  const int below = seen.bottom() + 1;
  const int above = seen.top() - window.height();
  if (right_of <= last_x) return {right_of, level_y};
  if (left_of >= screen.left()) return {left_of, level_y};
  if (below <= last_y) return {level_x, below};
  if (above >= screen.top()) return {level_x, above};
  const int room_on_the_right = screen.right() - seen.right();
  const int room_on_the_left = seen.left() - screen.left();
  return {room_on_the_right >= room_on_the_left ? last_x : screen.left(), level_y};
}

QPoint place_with_room(const QSize& window, const QRect& owner, int room, const QRect& screen) {
  const QPoint last = last_place(window, screen);
  const QPoint middle = owner.center() - QRect(QPoint(), window).center();
  return {std::clamp(std::min(middle.x(), last.x() - room), screen.left(), last.x()),
          std::clamp(middle.y(), screen.top(), last.y())};
}

}  // namespace korvex
