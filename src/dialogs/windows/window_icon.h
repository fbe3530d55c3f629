#pragma once

#include <QIcon>

namespace korvex {

// A table with its first row filled: for windows of a program that has no icon of its own.
QIcon window_icon();

}  // namespace korvex
