#include "host/sets/value_table.h"

#include <algorithm>
#include <charconv>

#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::sets {

namespace {

constexpr std::string_view weight_column = "weight";
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

// The text up to a mark, which is removed with it.
std::string_view take_until(std::string_view& text, char mark) {
  const std::size_t end = std::min(text.find(mark), text.size());
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return taken;
}

// What spreadsheets write ends in a carriage return as well.
std::string_view take_line(std::string_view& text) {
  std::string_view line = take_until(text, '\n');
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The first line that is not UTF-8, from 1; else 0.
std::size_t find_wrong_line(std::string_view text) {
  for (std::size_t line = 1; !text.empty();) {
    const std::size_t size = platform::first_character_size(text);
    if (size == 0) return line;
    if (text.front() == '\n') ++line;
    text.remove_prefix(size);
  }
  return 0;
}

std::vector<std::string_view> split_line(std::string_view line) {
  std::vector<std::string_view> texts(
      1 + static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')));
  for (std::string_view& text : texts) text = take_until(line, '\t');
  return texts;
}

std::string quoted(std::string_view text) { return '"' + platform::printable(text) + '"'; }

}  // namespace

std::variant<ValueTable, TableFault> ValueTable::read(std::string_view text) {
  ValueTable table;
  if (text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
  if (const std::size_t line = find_wrong_line(text); line != 0) {
    return TableFault{line, "is not UTF-8"};
  }
  const std::vector<std::string_view> names = split_line(take_line(text));
  const auto weight = std::find(names.begin(), names.end(), weight_column);
  const auto weight_place = static_cast<std::size_t>(weight - names.begin());
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].empty()) return TableFault{1, "a column has no name"};
    if (std::find(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(i), names[i]) !=
        names.begin() + static_cast<std::ptrdiff_t>(i)) {
      return TableFault{1, "there are two columns " + quoted(names[i])};
    }
    if (i != weight_place) table.columns_.push_back(names[i]);
  }
  if (table.columns_.empty()) return TableFault{1, "there are weights only"};
  for (std::size_t line = 2; !text.empty(); ++line) {
    const std::vector<std::string_view> texts = split_line(take_line(text));
    if (texts.size() != names.size()) {
      return TableFault{line, std::to_string(texts.size()) + " texts, expected " +
                                  std::to_string(names.size()) + " with tabs in between"};
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (i != weight_place) {
        table.values_.push_back(texts[i]);
        continue;
      }
      std::uint32_t number = 0;
      const char* const end = texts[i].data() + texts[i].size();
      const auto [stop, failure] = std::from_chars(texts[i].data(), end, number);
      if (failure != std::errc() || stop != end || number == 0) {
        return TableFault{line, "weight is " + quoted(texts[i]) + ", expected a number from 1"};
      }
      table.weights_.push_back(number);
    }
  }
  if (table.values_.empty()) return TableFault{1, "there are no rows"};
  return table;
}

std::optional<std::size_t> ValueTable::find_column(std::string_view name) const {
  const auto place = std::find(columns_.begin(), columns_.end(), name);
  if (place == columns_.end()) return std::nullopt;
  return static_cast<std::size_t>(place - columns_.begin());
}

}  // namespace korvex::sets
