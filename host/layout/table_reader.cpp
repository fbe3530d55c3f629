#include "host/layout/table_reader.h"

#include <algorithm>

#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

constexpr std::size_t longest_quoted_text = 40;  // bytes of a value that a message repeats

// A text as a message repeats it, cut between characters.
std::string shortened(std::string_view text) {
  if (text.size() <= longest_quoted_text) return '"' + platform::printable(text) + '"';
  return '"' + platform::printable(platform::cut_text(text, longest_quoted_text)) + "\"...";
}

}  // namespace

std::string describe(const toml::node& node) {
  if (const auto* value = node.as_string()) return shortened(value->get());
  if (const auto* value = node.as_integer()) return std::to_string(value->get());
  if (const auto* value = node.as_boolean()) return value->get() ? "true" : "false";
  switch (node.type()) {
    case toml::node_type::table:
      return "a table";
    case toml::node_type::array:
      return "an array";
    case toml::node_type::floating_point:
      return "a floating-point number";
    default:
      return "a date or time without quotes";
  }
}

SourcePlace place_of(const toml::node& node) {
  const toml::source_position& begin = node.source().begin;
  return {begin.line, begin.column};
}

std::string list_names(std::span<const std::string_view> names) {
  std::string list;
  for (const std::string_view name : names) {
    if (!list.empty()) list += ", ";
    list.append("\"").append(name).append("\"");
  }
  return list;
}

TableReader::TableReader(const toml::table& table, std::string title,
                         std::vector<LayoutError>& errors)
    : table_(table), title_(std::move(title)), errors_(errors) {}

void TableReader::report(SourcePlace place, std::string text) {
  if (errors_.size() < most_layout_errors) errors_.push_back({place, std::move(text)});
}

void TableReader::report_type(std::string_view key, const toml::node& node,
                              std::string_view expected) {
  report(place_of(node),
         std::string(key) + " is " + describe(node) + ", expected " + std::string(expected));
}

void TableReader::require(std::string_view key, std::string_view expected) {
  if (has(key)) return;
  report(place(), title_ + " has no " + std::string(key) + ", expected " + std::string(expected));
}

const toml::node* TableReader::find(std::string_view key) {
  known_.push_back(key);
  return table_.get(key);
}

void TableReader::know(std::span<const std::string_view> keys) {
  known_.insert(known_.end(), keys.begin(), keys.end());
}

std::optional<std::int64_t> TableReader::number(std::string_view key, std::int64_t lowest,
                                                std::int64_t highest) {
  const toml::node* node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto* value = node->as_integer();
  if (value == nullptr || value->get() < lowest || value->get() > highest) {
    report_type(key, *node,
                "an integer from " + std::to_string(lowest) + " to " + std::to_string(highest));
    return std::nullopt;
  }
  return value->get();
}

std::optional<std::int32_t> TableReader::integer(std::string_view key, std::int32_t lowest,
                                                 std::int32_t highest) {
  const auto value = number(key, lowest, highest);
  if (!value) return std::nullopt;
  return static_cast<std::int32_t>(*value);
}

std::optional<RecordCount> TableReader::records(std::string_view key) {
  const auto value = number(key, 0, static_cast<std::int64_t>(RecordCount::most));
  if (!value) return std::nullopt;
  return RecordCount(static_cast<std::uint64_t>(*value));
}

std::optional<bool> TableReader::boolean(std::string_view key) {
  const toml::node* node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto* value = node->as_boolean();
  if (value != nullptr) return value->get();
  report_type(key, *node, "true or false");
  return std::nullopt;
}

std::optional<std::string> TableReader::text(std::string_view key) {
  const toml::node* node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto* value = node->as_string();
  if (value != nullptr) return value->get();
  report_type(key, *node, "a string");
  return std::nullopt;
}

std::optional<std::string> TableReader::text_or_integer(std::string_view key) {
  const toml::node* node = find(key);
  if (node == nullptr) return std::nullopt;
  if (const auto* value = node->as_string()) return value->get();
  if (const auto* value = node->as_integer()) return std::to_string(value->get());
  report_type(key, *node, "a string or an integer");
  return std::nullopt;
}

std::optional<std::size_t> TableReader::choice(std::string_view key,
                                               std::span<const std::string_view> names) {
  const toml::node* node = find(key);
  if (node == nullptr) return std::nullopt;
  const auto* value = node->as_string();
  const auto name = value == nullptr
                        ? names.end()
                        : std::find(names.begin(), names.end(), std::string_view(value->get()));
  if (name != names.end()) return static_cast<std::size_t>(name - names.begin());
  report_type(key, *node, "one of " + list_names(names));
  return std::nullopt;
}

const toml::table* TableReader::table(std::string_view key) {
  const toml::node* node = find(key);
  if (node == nullptr) return nullptr;
  if (node->as_table() == nullptr) report_type(key, *node, "a table");
  return node->as_table();
}

SourcePlace TableReader::place(std::string_view key) const {
  const toml::node* node = table_.get(key);
  return node == nullptr ? place() : place_of(*node);
}

void TableReader::reject_unknown_keys() {
  std::string expected;
  for (const auto& [key, node] : table_) {
    if (std::find(known_.begin(), known_.end(), key.str()) != known_.end()) continue;
    if (expected.empty()) {
      std::sort(known_.begin(), known_.end());
      known_.erase(std::unique(known_.begin(), known_.end()), known_.end());
      expected = ", expected one of " + list_names(known_);
    }
    const toml::source_position& begin = key.source().begin;
    report({begin.line, begin.column},
           "unknown key " + shortened(key.str()) + " in " + title_ + expected);
  }
}

}  // namespace korvex::host
