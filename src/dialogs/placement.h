#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace korvex {

// Where a window of this size, frame included, hides least of what is to stay in sight: beside it,
// else below or above it, else at the edge of the screen that is farther from it. Always within the
// screen, as far as the window fits there.
QPoint place_beside(const QSize& window, const QRect& seen, const QRect& screen);

}  // namespace korvex
