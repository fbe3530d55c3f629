#include "host/text/printable_text.h"

#include <locale.h>
#include <wchar.h>

#include <algorithm>
#include <cwchar>

#include "host/text/utf8.h"
#include "platform/codepage.h"

namespace korvex::host {

namespace {

constexpr char hexadecimal[] = "0123456789ABCDEF";

std::string escaped(unsigned value) {
  return {'\\', 'x', hexadecimal[value >> 4], hexadecimal[value & 0xF]};
}

// The size of the character at the begin of a UTF-8 text; 0 when there is none.
std::size_t first_size(std::string_view text) {
  const std::size_t size = character_size(text.front());
  if (size > text.size()) return 0;
  const std::string_view rest = text.substr(0, size).substr(std::min<std::size_t>(size, 1));
  return std::all_of(rest.begin(), rest.end(), is_continuation) ? size : 0;
}

bool is_control(unsigned value) { return value < 0x20 || value == 0x7F; }

// U+0080 to U+009F are control characters too; in UTF-8 they are 0xC2 and one of these bytes.
constexpr unsigned high_control_lead = 0xC2;
bool is_high_control_trail(unsigned value) { return value >= 0x80 && value <= 0x9F; }

}  // namespace

std::string printable(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto value = static_cast<unsigned char>(text[i]);
    const std::size_t size = first_size(text.substr(i));
    const unsigned next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
    if (size == 0 || is_control(value)) {
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

std::string printable_from_code_page(std::string_view text) {
  return printable(platform::to_utf8(text));
}

std::size_t columns_of(std::string_view text) {
  static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) return text.size();
  const locale_t previous = ::uselocale(unicode);
  std::size_t columns = 0;
  std::mbstate_t state = {};
  while (!text.empty()) {
    wchar_t character = 0;
    const std::size_t size = std::mbrtowc(&character, text.data(), text.size(), &state);
    if (size == 0 || size > text.size()) break;
    columns += static_cast<std::size_t>(std::max(::wcwidth(character), 0));
    text.remove_prefix(size);
  }
  ::uselocale(previous);
  return columns;
}

}  // namespace korvex::host
