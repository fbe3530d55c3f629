#include "dialogs/widgets/shown_text.h"

#include "platform/codepage.h"

namespace korvex {

namespace {

constexpr std::size_t max_text_size = 32767;
constexpr std::string_view dots = "...";
constexpr std::string_view measured_dots("...\0", 4);

}  // namespace

std::string fit_text(std::string_view text, int width, int margin, const TextWidth& text_width) {
  text = text.substr(0, max_text_size);
  if (text.empty() || text_width(text) + margin <= width) return std::string(text);
  const int reserved = text_width(measured_dots) + margin;
  std::size_t kept = 0;
  while (kept < text.size() && text_width(text.substr(0, kept)) + reserved < width) ++kept;
  std::string fitted(text.substr(0, kept));
  // By its value alone: the second byte of a character may go, too.
  const bool was_stopped = kept < text.size();
  if (was_stopped && kept > 0 && platform::is_lead_byte(fitted.back())) fitted.pop_back();
  return fitted.append(dots);
}

}  // namespace korvex
