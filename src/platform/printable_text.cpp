#include "platform/printable_text.h"

#include <optional>

#include "platform/codepage.h"
#include "platform/utf8.h"

namespace korvex::platform {

namespace {

constexpr char hexadecimal[] = "0123456789ABCDEF";

std::string escaped(unsigned value) {
  return {'\\', 'x', hexadecimal[value >> 4], hexadecimal[value & 0xF]};
}

bool is_control(unsigned value) { return value < 0x20 || value == 0x7F; }

// U+0080 to U+009F are control characters too; in UTF-8 they are 0xC2 and one of these bytes.
constexpr unsigned high_control_lead = 0xC2;
bool is_high_control_trail(unsigned value) { return value >= 0x80 && value <= 0x9F; }

// Control characters in the text are escaped, but for one that is kept where there is one.
std::string printable_but(std::string_view text, std::optional<unsigned char> kept) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto value = static_cast<unsigned char>(text[i]);
    const std::size_t size = first_character_size(text.substr(i));
    const unsigned next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
    if (size == 0 || (is_control(value) && value != kept)) {
      out += escaped(value);
    } else if (value == high_control_lead && is_high_control_trail(next)) {
      out += escaped(next);
      ++i;
    } else {
      out += text.substr(i, size);
      i += size - 1;
    }
  }
  return out;
}

}  // namespace

std::string printable(std::string_view text) { return printable_but(text, std::nullopt); }

std::string quoted(std::string_view text) { return '"' + printable(text) + '"'; }

std::string printable_lines(std::string_view text) { return printable_but(text, '\n'); }

std::string printable_from_code_page(std::string_view text) {
  return printable(shown_in_utf8(text));
}

std::string exact_printable_from_code_page(std::string_view text) {
  return printable(to_utf8(text));
}

MessageText MessageText::words(std::string_view words) {
  MessageText text;
  text.utf8_ = words;
  return text;
}

MessageText MessageText::code_page(std::string_view text) {
  return words(printable_from_code_page(text));
}

MessageText MessageText::path(std::string_view text) { return words(printable(text)); }

MessageText& MessageText::operator+=(const MessageText& part) {
  utf8_ += part.utf8_;
  return *this;
}

}  // namespace korvex::platform
