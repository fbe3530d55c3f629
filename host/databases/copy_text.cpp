#include "host/databases/copy_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <optional>

#include "host/databases/sql_names.h"
#include "host/databases/sql_words.h"
#include "host/text/any_case.h"
#include "platform/text_lines.h"

namespace korvex::host {

namespace {

constexpr std::string_view copy_word = "COPY";
constexpr std::string_view key_begin = ")=(";
constexpr std::string_view partition_key_end = ") = (";
constexpr std::string_view name_separator = ", ";
constexpr std::string_view digits = "0123456789";
constexpr std::string_view utc_zone = "+00";  // which the connection asks for

// The letter that stands for a byte after a backslash; none for the bytes that stay.
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

// A number as a column of its kind keeps it; nothing for a text that is none.
template <typename Number>
std::optional<Number> number_of(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, number);
  if (failure != std::errc() || stop != end) return std::nullopt;
  return number;
}

template <typename Number>
bool is_same_number(std::string_view left, std::string_view right) {
  const auto number = number_of<Number>(left);
  return number && number == number_of<Number>(right);
}

char in_lower_case(char letter) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

// Any of the words that the server takes for true.
bool is_true_word(std::string_view word) {
  return !word.empty() && (word.front() == '1' || in_lower_case(word.front()) == 't' ||
                           in_lower_case(word.front()) == 'y' || is_same_in_any_case(word, "on"));
}

std::string_view without_end(std::string_view text, std::string_view end) {
  return text.ends_with(end) ? text.substr(0, text.size() - end.size()) : text;
}

std::string_view without_trailing_spaces(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

bool is_same_value(std::string_view written, std::string_view value, const ColumnSchema& column) {
  switch (column.type) {
    case ColumnType::integer16:
    case ColumnType::integer32:
    case ColumnType::integer64:
    case ColumnType::decimal:
      return shortest(written) == shortest(value);
    case ColumnType::floating4:
      return is_same_number<float>(written, value);
    case ColumnType::floating8:
      return is_same_number<double>(written, value);
    case ColumnType::boolean:
      return is_true_word(written) == is_true_word(value);
    case ColumnType::time:
    case ColumnType::timestamp:
      return without_end(written, utc_zone) == without_end(value, utc_zone);
    case ColumnType::uuid:
    case ColumnType::hex_binary:
      return is_same_in_any_case(written, value);
    default:
      if (!column.is_padded) return written == value;
      return without_trailing_spaces(written) == without_trailing_spaces(value);
  }
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
    std::string line(platform::take_line(context));
    const std::size_t name = line.find(table);
    if (line.find(copy_word) == std::string::npos || name == std::string::npos) continue;
    line.erase(name, table.size());
    const std::size_t number = line.find_first_of(digits);
    if (number == std::string::npos) continue;
    const char* const stop =
        std::from_chars(line.data() + number, line.data() + line.size(), place.line).ptr;
    // After the column's name is a colon, in some languages with a space in front of it.
    const std::string_view rest(stop, static_cast<std::size_t>(line.data() + line.size() - stop));
    for (const std::string& column : columns) {
      for (const char* end : {":", " :"}) {
        if (rest.find(" " + column + end) != std::string_view::npos) place.column = column;
      }
      if (!place.column.empty()) break;
    }
    break;
  }
  return place;
}

std::vector<std::size_t> key_places(std::string_view detail,
                                    const std::vector<std::string>& columns) {
  const std::size_t end = detail.find(key_begin);
  if (end == std::string_view::npos) return {};
  const std::size_t begin = detail.substr(0, end).rfind('(') + 1;
  std::string_view list = detail.substr(begin, end - begin);
  std::vector<std::size_t> places;
  while (!list.empty()) {
    const std::string_view name = list.substr(0, list.find(name_separator));
    const auto column = std::find_if(columns.begin(), columns.end(), [name](const auto& each) {
      return name == each || name == quoted_name(each);
    });
    if (column == columns.end()) return {};
    places.push_back(static_cast<std::size_t>(column - columns.begin()));
    list.remove_prefix(std::min(name.size() + name_separator.size(), list.size()));
  }
  return places;
}

std::vector<std::size_t> partition_places(std::string_view detail,
                                          const std::vector<std::string>& columns) {
  const std::size_t begin = detail.find('(');
  const std::size_t end = detail.find(partition_key_end);
  if (end == std::string_view::npos || end < begin) return {};
  return names_in(sql_words(detail.substr(begin, end - begin)), columns);
}

bool names_key(std::string_view detail, const std::vector<KeyPart>& key) {
  const std::size_t begin = detail.find(key_begin);
  if (begin == std::string_view::npos) return false;
  std::string_view rest = detail.substr(begin + key_begin.size());
  for (std::size_t i = 0; i < key.size(); ++i) {
    if (key[i].value.empty()) return false;  // NULL, which is in no violated key
    const std::string_view separator = i + 1 < key.size() ? ", " : ")";
    const bool is_same_text = rest.starts_with(std::string(key[i].value).append(separator));
    const std::string_view written =
        is_same_text ? key[i].value : rest.substr(0, std::min(rest.find(separator), rest.size()));
    if (!is_same_value(written, key[i].value, key[i].column)) return false;
    rest.remove_prefix(std::min(written.size() + separator.size(), rest.size()));
  }
  return true;
}

}  // namespace korvex::host
