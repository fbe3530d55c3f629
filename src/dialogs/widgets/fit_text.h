#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace korvex {

// How wide a text is drawn. Is asked for beginnings of a text, which may end between the two bytes
// of a character, and for the three dots with a zero byte behind them.
using TextWidth = std::function<int(std::string_view)>;

// The text when it and the margin fit into the width, else as many bytes of its beginning as fit
// with three dots behind them. Bytes that no list could show are ignored: those behind the 32767th.
std::string fit_text(std::string_view text, int width, int margin, const TextWidth& text_width);

}  // namespace korvex
