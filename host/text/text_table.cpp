#include "host/text/text_table.h"

#include <locale.h>
#include <wchar.h>

#include <algorithm>
#include <cwchar>
#include <ostream>

#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::size_t gap = 2;

// How many columns a printable UTF-8 text takes on a terminal.
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

}  // namespace

TextTable::Cell TextTable::plain(std::string text) {
  const std::size_t width = text.size();
  return {std::move(text), width};
}

TextTable::Cell TextTable::from_utf8(std::string_view text) {
  std::string shown = platform::printable(text);
  const std::size_t width = columns_of(shown);
  return {std::move(shown), width};
}

TextTable::Cell TextTable::from_code_page(std::string_view text) {
  std::string shown = platform::exact_printable_from_code_page(text);
  const std::size_t width = columns_of(shown);
  return {std::move(shown), width};
}

void TextTable::print(std::ostream& out) const {
  std::vector<std::size_t> widths;
  for (const auto& row : rows_) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].width);
  }
  for (const auto& row : rows_) {
    std::string line;
    std::size_t owed = 0;  // blanks that only a further text needs
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::size_t padding = widths[i] - row[i].width;
      const bool is_right = std::find(right_.begin(), right_.end(), i) != right_.end();
      if (is_right) owed += padding;
      if (!row[i].text.empty()) {
        line.append(owed, ' ').append(row[i].text);
        owed = 0;
      } else {
        owed += row[i].width;
      }
      owed += gap + (is_right ? 0 : padding);
    }
    out << line << "\n";
  }
}

}  // namespace korvex::host
