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
// of pages alone, also short ones unless it is told not to.
inline QString tooltip_text(const QString& plain) {
  if (plain.isEmpty()) return plain;
  constexpr int longest_whole_text = 80;
  const QString space = plain.size() <= longest_whole_text ? "pre" : "pre-wrap";
  return "<p style=\"white-space: " + space + "\">" + plain.toHtmlEscaped() + "</p>";
}

}  // namespace korvex
