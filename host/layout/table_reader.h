#pragma once

#include <toml++/toml.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/layout/layout.h"

namespace korvex::host {

// Nobody reads more errors than these; a file of nothing but errors would fill the memory.
inline constexpr std::size_t most_layout_errors = 1000;

// Of a layout file: far more than any that was written or imported takes.
inline constexpr std::size_t most_layout_bytes = std::size_t{16} << 20;

inline constexpr std::int32_t largest_integer = std::numeric_limits<std::int32_t>::max();

// What is at a node, for error messages: `"abc"`, `12`, `a table`.
std::string describe(const toml::node& node);

SourcePlace place_of(const toml::node& node);

// The names as an error message lists them: `"a", "b", "c"`.
std::string list_names(std::span<const std::string_view> names);

// Reads the keys of one table of a layout. A getter answers nothing for an absent key and for a
// value of the wrong kind, which it also reports; every key asked for counts as known, and must
// outlive the reader.
class TableReader {
 public:
  // `title` names the table in messages. Table and errors must outlive the reader.
  TableReader(const toml::table& table, std::string title, std::vector<LayoutError>& errors);

  // Reports the absence of a key.
  void require(std::string_view key, std::string_view expected);

  std::optional<std::int32_t> integer(std::string_view key, std::int32_t lowest,
                                      std::int32_t highest = largest_integer);
  std::optional<RecordCount> records(std::string_view key);
  std::optional<bool> boolean(std::string_view key);
  std::optional<std::string> text(std::string_view key);

  // A text, or an integer as its decimal text.
  std::optional<std::string> text_or_integer(std::string_view key);

  // The place in `names` of the text that is at the key.
  std::optional<std::size_t> choice(std::string_view key, std::span<const std::string_view> names);

  const toml::table* table(std::string_view key);

  // Null when absent.
  const toml::node* find(std::string_view key);

  // These keys are known, whoever reads them.
  void know(std::span<const std::string_view> keys);

  bool has(std::string_view key) const { return table_.contains(key); }

  // Of the key's value, or of the table when it has no such key.
  SourcePlace place(std::string_view key) const;
  SourcePlace place() const { return place_of(table_); }

  void report(SourcePlace place, std::string text);
  std::size_t error_count() const { return errors_.size(); }
  void report_type(std::string_view key, const toml::node& node, std::string_view expected);

  // Every key that no reader asked for is an error.
  void reject_unknown_keys();

 private:
  std::optional<std::int64_t> number(std::string_view key, std::int64_t lowest,
                                     std::int64_t highest);

  const toml::table& table_;
  std::string title_;
  std::vector<LayoutError>& errors_;
  std::vector<std::string_view> known_;  // some of them twice
};

}  // namespace korvex::host
