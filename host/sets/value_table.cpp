#include "host/sets/value_table.h"

#include <algorithm>
#include <charconv>

#include "platform/printable_text.h"
#include "platform/text_lines.h"
#include "platform/utf8.h"

namespace korvex::sets {

namespace {

constexpr std::string_view weight_column = "weight";
constexpr const char* not_utf8 = "is not UTF-8";

std::vector<std::string_view> split_line(std::string_view line) {
  std::vector<std::string_view> texts(
      1 + static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')));
  for (std::string_view& text : texts) text = platform::take_until(line, '\t');
  return texts;
}

// 0 for what is no weight.
std::uint32_t parse_weight(std::string_view text) {
  std::uint32_t weight = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] = std::from_chars(text.data(), end, weight);
  return failure == std::errc() && stop == end ? weight : 0;
}

}  // namespace

std::variant<ValueTable, TableFault> ValueTable::read(std::string_view text) {
  platform::skip_byte_order_mark(text);
  ValueTable table;
  std::size_t line = 1;
  std::string fault = table.take_names(platform::take_line(text));
  for (; fault.empty() && !text.empty(); ++line) fault = table.add_row(platform::take_line(text));
  if (fault.empty() && table.values_.empty()) fault = "there are no rows";
  if (!fault.empty()) return TableFault{line, std::move(fault)};
  return table;
}

std::string ValueTable::take_names(std::string_view line) {
  if (!platform::is_utf8(line)) return not_utf8;
  for (const std::string_view name : split_line(line)) {
    if (name.empty()) return "a column has no name";
    if (find_column(name) || (name == weight_column && weight_place_)) {
      return "there are two columns " + platform::quoted(name);
    }
    if (name == weight_column) {
      weight_place_ = columns_.size();
    } else {
      columns_.push_back(name);
    }
  }
  return columns_.empty() ? "there are weights only" : "";
}

std::string ValueTable::add_row(std::string_view line) {
  if (!platform::is_utf8(line)) return not_utf8;
  std::vector<std::string_view> texts = split_line(line);
  const std::size_t expected = columns_.size() + (weight_place_ ? 1 : 0);
  if (texts.size() != expected) {
    return std::to_string(texts.size()) + " texts, expected " + std::to_string(expected) +
           " with tabs in between";
  }
  if (weight_place_) {
    const auto place = texts.begin() + static_cast<std::ptrdiff_t>(*weight_place_);
    const std::uint32_t weight = parse_weight(*place);
    if (weight == 0) return "weight is " + platform::quoted(*place) + ", expected a number from 1";
    weights_.push_back(weight);
    texts.erase(place);
  }
  values_.insert(values_.end(), texts.begin(), texts.end());
  return {};
}

std::optional<std::size_t> ValueTable::find_column(std::string_view name) const {
  const auto place = std::find(columns_.begin(), columns_.end(), name);
  if (place == columns_.end()) return std::nullopt;
  return static_cast<std::size_t>(place - columns_.begin());
}

}  // namespace korvex::sets
