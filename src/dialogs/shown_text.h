#pragma once

#include <QString>
#include <string_view>

#include "platform/codepage.h"
#include "platform/printable_text.h"

namespace korvex {

// Names, formats and values, which are in code page 932.
inline QString shown(std::string_view bytes) {
  return QString::fromStdString(platform::shown_in_utf8(bytes));
}

// Paths, which are UTF-8.
inline QString shown_path(std::string_view path) {
  return QString::fromStdString(platform::printable(path));
}

// A text from outside as a tooltip: Qt takes one with tags in it for a page, and breaks the lines
// of pages alone.
inline QString tooltip_text(const QString& plain) {
  if (plain.isEmpty()) return plain;
  return "<p style=\"white-space: pre-wrap\">" + plain.toHtmlEscaped() + "</p>";
}

}  // namespace korvex
