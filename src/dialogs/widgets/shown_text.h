#pragma once

#include <QString>
#include <functional>
#include <string>
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

// How wide a text is drawn. Is asked for beginnings of a text, which may end between the two bytes
// of a character, and for the three dots with a zero byte after them.
using TextWidth = std::function<int(std::string_view)>;

// The text when it and the margin fit into the width, else as many bytes of its beginning as fit
// with three dots after them. Bytes that no list could show are ignored: those after the 32767th.
std::string fit_text(std::string_view text, int width, int margin, const TextWidth& text_width);

}  // namespace korvex
