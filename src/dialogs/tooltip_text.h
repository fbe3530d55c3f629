#pragma once

#include <QString>

namespace korvex {

// A text from outside as a tooltip: Qt takes one with tags in it for a page, and breaks the lines
// of pages alone.
inline QString tooltip_text(const QString& plain) {
  if (plain.isEmpty()) return plain;
  return "<p style=\"white-space: pre-wrap\">" + plain.toHtmlEscaped() + "</p>";
}

}  // namespace korvex
