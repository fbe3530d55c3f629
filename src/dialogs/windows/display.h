#pragma once

#include <QIcon>
#include <string>

namespace korvex {

// Makes ready to show windows in this thread. Uses the QApplication of the process, or makes one
// that stays until the process ends. False when no window can be shown; `reason` says why, and
// nothing has been made.
//
// Qt ends the process when it finds no display, so everything that it would stumble over is tried
// before: the display itself, and the plug-in that speaks to it with all its libraries.
bool open_display(std::string& reason);

// Whether this thread may show windows already, without anything being made for it.
bool has_display();

// A table with its first row filled: for windows of a program that has no icon of its own.
QIcon window_icon();

}  // namespace korvex
