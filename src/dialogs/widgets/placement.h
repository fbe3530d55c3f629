#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace korvex {

// Where a window of this size, frame included, hides least of what is to stay in sight: beside it,
// else below or above it, else at the edge of the screen that is farther from it. Always within the
// screen, as far as the window fits there.
QPoint place_beside(const QSize& window, const QRect& seen, const QRect& screen);

// In the middle of `owner`, but so far to the left that `room` is free on the right of the window,
// as far as the screen has it.
QPoint place_with_room(const QSize& window, const QRect& owner, int room, const QRect& screen);

}  // namespace korvex
