#include "host/copy_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace korvex::host {

namespace {

constexpr std::string_view copy_word = "COPY";
constexpr std::string_view key_begin = ")=(";
constexpr std::string_view digits = "0123456789";

// The letter that stands for a byte behind a backslash; none for the bytes that stay.
constexpr auto escape_letters = [] {
  std::array<char, 256> letters = {};
  letters['\\'] = '\\';
  letters['\t'] = 't';
  letters['\n'] = 'n';
  letters['\r'] = 'r';
  return letters;
}();

char escape_letter(char byte) { return escape_letters[static_cast<unsigned char>(byte)]; }

void append_escaped(std::string_view field, std::string& out) {
  // Few fields have anything to escape, and a plain copy is several times as fast.
  if (std::none_of(field.begin(), field.end(), escape_letter)) {
    out.append(field);
    return;
  }
  for (const char byte : field) {
    const char letter = escape_letter(byte);
    if (letter != '\0') out += '\\';
    out += letter != '\0' ? letter : byte;
  }
}

// The shortest way to write a number; any other text as it is.
std::string shortest(std::string_view text) {
  const bool has_sign = text.starts_with('+') || text.starts_with('-');
  std::string_view number = text.substr(has_sign ? 1 : 0);
  if (number.empty() || number.find_first_not_of("0123456789.") != std::string_view::npos) {
    return std::string(text);
  }
  number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
  if (number.find('.') != std::string_view::npos) {
    while (number.ends_with('0')) number.remove_suffix(1);
    if (number.ends_with('.')) number.remove_suffix(1);
  }
  if (number.empty()) return "0";
  return (text.starts_with('-') ? "-" : "") + std::string(number);
}

}  // namespace

void append_copy_row(const RowFields& fields, std::string& out) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) out += '\t';
    if (fields[i].empty()) {
      out += "\\N";
    } else {
      append_escaped(fields[i], out);
    }
  }
  out += '\n';
}

CopyPlace find_copy_place(std::string_view context, std::string_view table,
                          const std::vector<std::string>& columns) {
  CopyPlace place;
  while (!context.empty()) {
    const std::size_t end = std::min(context.find('\n'), context.size());
    std::string line(context.substr(0, end));
    context.remove_prefix(std::min(end + 1, context.size()));
    const std::size_t name = line.find(table);
    if (line.find(copy_word) == std::string::npos || name == std::string::npos) continue;
    line.erase(name, table.size());
    const std::size_t number = line.find_first_of(digits);
    if (number == std::string::npos) continue;
    const char* const stop =
        std::from_chars(line.data() + number, line.data() + line.size(), place.line).ptr;
    // Behind the column's name stands a colon, in some languages with a space in front of it.
    const std::string_view rest(stop, static_cast<std::size_t>(line.data() + line.size() - stop));
    for (const std::string& column : columns) {
      for (const char* behind : {":", " :"}) {
        if (rest.find(" " + column + behind) != std::string_view::npos) place.column = column;
      }
      if (!place.column.empty()) break;
    }
    break;
  }
  return place;
}

bool names_key(std::string_view detail, const std::vector<std::string_view>& values) {
  const std::size_t begin = detail.find(key_begin);
  if (begin == std::string_view::npos) return false;
  std::string_view rest = detail.substr(begin + key_begin.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string_view behind = i + 1 < values.size() ? ", " : ")";
    const bool is_same_text = rest.starts_with(std::string(values[i]).append(behind));
    const std::string_view written =
        is_same_text ? values[i] : rest.substr(0, std::min(rest.find(behind), rest.size()));
    if (shortest(written) != shortest(values[i])) return false;
    rest.remove_prefix(std::min(written.size() + behind.size(), rest.size()));
  }
  return true;
}

}  // namespace korvex::host
