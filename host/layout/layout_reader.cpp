#include "host/layout/layout_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <tuple>

#include "host/layout/item_reader.h"
#include "host/layout/layout_paths.h"
#include "host/layout/layout_syntax.h"
#include "host/layout/own_items.h"
#include "host/layout/run_files.h"
#include "host/layout/table_reader.h"
#include "host/layout/value_errors.h"
#include "host/process/signals.h"
#include "host/sets/catalogue.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 3> kind_names = {"record", "table", "iso"};
constexpr std::array<LayoutKind, 3> kinds = {layout_kind::record_file, layout_kind::table,
                                             layout_kind::iso};
constexpr std::array<std::string_view, 2> quote_names = {"none", "double"};
constexpr std::array<Quotation, 2> marks = {quotation::none, quotation::double_mark};

constexpr std::array<std::string_view, 2> encoding_names = {"cp932", "utf-8"};
constexpr std::size_t utf8_encoding = 1;
constexpr std::int32_t newest_ways = 1;

constexpr std::size_t longest_path = KORVEX_PATH_SIZE - 1;
constexpr std::size_t most_errors_of_no_layout = 10;

// The paths that a layout leaves out follow from the others: one report is enough.
void check_path_lengths(TableReader& reader, const Layout& layout) {
  const std::array<std::pair<std::string_view, const std::string*>, 3> paths = {
      {{"data", &layout.data}, {"settings", &layout.settings}, {"work", &layout.work}}};
  for (const auto& [key, path] : paths) {
    if (path->size() <= longest_path) continue;
    reader.report(reader.place(key),
                  std::string(key) + " gives a path of " + std::to_string(path->size()) +
                      " bytes, expected at most " + std::to_string(longest_path));
    return;
  }
}

void read_paths(TableReader& reader, Layout& layout) {
  const std::size_t errors_before = reader.error_count();
  reader.require("data", "the path of the data file");
  layout.data = read_path(reader, "data", layout.file);
  layout.settings = read_path(reader, "settings", layout.file);
  layout.work = read_path(reader, "work", layout.file);
  if (reader.error_count() != errors_before) return;

  if (layout.settings.empty()) layout.settings = default_settings_path(layout.data);
  if (layout.work.empty()) layout.work = layout_folder(layout.file);
  check_path_lengths(reader, layout);
  layout.data_place = reader.place("data");
  layout.settings_place = reader.has("settings") ? reader.place("settings") : layout.data_place;
  std::error_code ignored;
  if (std::filesystem::is_directory(layout.data, ignored)) {
    reader.report(layout.data_place, "data is a folder, expected the path of a file");
  }
}

// The table that the records are meant for.
void read_table(TableReader& reader, Layout& layout) {
  const auto table = reader.text("table");
  if (!table) return;
  layout.table = *table;
  layout.table_place = reader.place("table");
  if (table->empty()) {
    reader.report(layout.table_place, "table is \"\", expected the name of a table of a database");
  }
}

// The sets of items in which the records are to differ: a name, or several in brackets.
void read_unique_sets(TableReader& reader, Layout& layout) {
  constexpr std::string_view key = "unique";
  constexpr std::string_view expected = "names of items, and lists of names";
  const toml::node* node = reader.find(key);
  if (node == nullptr) return;
  const toml::array* sets = node->as_array();
  if (sets == nullptr) return reader.report_type(key, *node, expected);
  for (const toml::node& set : *sets) {
    std::vector<PlacedText> names;
    const auto take = [&](const toml::node& name) {
      const auto* text = name.as_string();
      if (text != nullptr) names.push_back({text->get(), place_of(name)});
      return text != nullptr;
    };
    const toml::array* several = set.as_array();
    const bool is_good =
        several == nullptr
            ? take(set)
            : !several->empty() && std::all_of(several->begin(), several->end(), take);
    if (!is_good) return reader.report_type(key, set, expected);
    layout.unique.push_back(std::move(names));
  }
}

void check_unique_sets(const Layout& layout, std::vector<LayoutError>& errors) {
  for (const std::vector<PlacedText>& set : layout.unique) {
    for (const PlacedText& name : set) {
      const bool is_there =
          std::any_of(layout.items.begin(), layout.items.end(),
                      [&](const LayoutItem& item) { return item.name == name.text; });
      if (is_there) continue;
      errors.push_back({name.place, "unique names \"" + platform::printable(name.text) +
                                        "\", expected an item"});
    }
  }
}

// What the values beyond the module's are made with.
std::optional<std::uint64_t> read_seed(std::string_view text) {
  std::uint64_t seed = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), seed);
  const bool is_whole = failure == std::errc() && end == text.data() + text.size();
  return is_whole ? std::optional(seed) : std::nullopt;
}

void read_own_keys(TableReader& reader, Layout& layout) {
  if (const toml::node* seed = reader.find("seed")) {
    // TOML has no whole numbers above 2^63 - 1.
    if (const auto* number = seed->as_integer()) {
      layout.seed = static_cast<std::uint64_t>(number->get());
    } else if (const auto text = seed->value<std::string_view>(); text && read_seed(*text)) {
      layout.seed = *read_seed(*text);
    } else {
      reader.report_type("seed", *seed,
                         "a whole number, or a text with one up to 18446744073709551615");
    }
  }
  layout.salt = reader.text("salt").value_or(std::string(platform::stem(layout.file)));
  layout.is_utf8 = reader.choice("encoding", encoding_names) == utf8_encoding;
  // What has been made with a version stays: a better scheme, or a longer set, is another one.
  reader.integer("ways", 1, newest_ways);
  layout.sets_version =
      reader.integer("sets", 1, sets::newest_version).value_or(sets::newest_version);
}

void read_header(const toml::table& table, std::optional<RecordCount> records, Layout& layout,
                 std::vector<LayoutError>& errors) {
  TableReader reader(table, "[layout]", errors);
  reader.require("kind", "one of " + list_names(kind_names));
  if (const auto kind = reader.choice("kind", kind_names)) {
    layout.kind = kinds[*kind];
  }
  if (!records) reader.require("records", "the number of records, here or as --records");
  layout.own_records = reader.records("records");
  layout.records = records.value_or(layout.own_records.value_or(RecordCount()));
  if (!records) layout.records_place = reader.place("records");
  layout.level = SettingsLevel{reader.integer("level", 0).value_or(1)};
  layout.null_default = reader.boolean("null_default").value_or(false);
  const auto quote = reader.choice("quote", quote_names);
  layout.quotation = quote ? marks[*quote] : quotation::none;
  read_table(reader, layout);
  read_paths(reader, layout);
  read_own_keys(reader, layout);
  read_unique_sets(reader, layout);
  reader.reject_unknown_keys();
}

void check_numbers(const Layout& layout, std::vector<LayoutError>& errors) {
  std::map<ItemNumber, std::uint32_t> lines;
  for (const LayoutItem& item : layout.items) {
    const auto [taken, is_new] = lines.try_emplace(item.number, item.place.line);
    if (is_new) continue;
    errors.push_back({item.place, "number " + std::to_string(number_of(item.number)) +
                                      " belongs to the item on line " +
                                      std::to_string(taken->second) + ", expected another one"});
  }
}

// The module knows items by their numbers; sources and ways find them by their names.
void check_names(const Layout& layout, std::vector<LayoutError>& errors) {
  if (is_plain(layout)) return;
  std::map<std::string_view, std::uint32_t> lines;
  for (const LayoutItem& item : layout.items) {
    const auto [taken, is_new] = lines.try_emplace(item.name, item.place.line);
    if (is_new || item.name.empty()) continue;
    errors.push_back({item.place, "name " + platform::printable(item.name) +
                                      " belongs to the item on line " +
                                      std::to_string(taken->second) + ", expected another one"});
  }
}

void check_hidden(const Layout& layout, std::vector<LayoutError>& errors) {
  const bool is_nothing_written =
      std::all_of(layout.items.begin(), layout.items.end(),
                  [](const LayoutItem& item) { return item.is_hidden(); });
  if (!is_nothing_written) return;
  errors.push_back(
      {layout.items.front().place, "all items are hidden, expected one that is written"});
}

void check_levels(const Layout& layout, std::vector<LayoutError>& errors) {
  std::map<RepeatLevel, const LayoutItem*> items;
  for (const LayoutItem& item : layout.items) {
    if (!item.values || !item.values->repeat || item.values->repeat->level == RepeatLevel::none)
      continue;
    const RepeatSettings& repeat = *item.values->repeat;
    const auto [taken, is_new] = items.try_emplace(repeat.level, &item);
    if (is_new) continue;
    errors.push_back({repeat.place, "level " + std::to_string(number_of(repeat.level)) +
                                        " is that of the item on line " +
                                        std::to_string(taken->second->place.line) +
                                        ", expected another one"});
  }
}

void read_items(TableReader& root, MissingLists lists, Layout& layout,
                std::vector<LayoutError>& errors) {
  constexpr std::string_view key = "item";
  root.require(key, "at least one [[item]]");
  const toml::node* node = root.find(key);
  if (node == nullptr) return;
  const toml::array* items = node->as_array();
  if (items == nullptr || items->empty() || !items->is_array_of_tables()) {
    root.report_type(key, *node, "a [[item]] for each item");
    return;
  }
  std::vector<bool> is_clean;
  for (const toml::node& item : *items) {
    if (errors.size() >= most_layout_errors) return;
    const auto position = static_cast<std::int32_t>(layout.items.size()) + 1;
    const std::size_t errors_before = errors.size();
    layout.items.push_back(read_item(*item.as_table(), layout, position, errors));
    is_clean.push_back(errors.size() == errors_before);
  }
  check_numbers(layout, errors);
  check_names(layout, errors);
  check_hidden(layout, errors);
  check_levels(layout, errors);
  check_unique_sets(layout, errors);
  if (lists == MissingLists::refused) append_missing_lists(layout, errors);
  // Nothing will get to storing the values: what is wrong with them is said with the rest.
  if (!errors.empty()) append_value_errors(layout, is_clean, errors);
}

// A parsed layout takes some hundred bytes of memory for each of its values, and every value comes
// with one of the characters that set values apart. A layout that describes items has one of them
// in twenty bytes; one that has far more would take far more memory than it is large.
constexpr std::size_t always_allowed_separators = 128 * 1024;
constexpr std::size_t allowed_bytes_a_separator = 16;

bool may_fit(std::string_view text) {
  const auto count = std::count_if(text.begin(), text.end(), [](char byte) {
    return byte == '=' || byte == ',' || byte == '.' || byte == '[';
  });
  return static_cast<std::size_t>(count) <=
         always_allowed_separators + text.size() / allowed_bytes_a_separator;
}

// A file of another kind has an error in nearly every line.
void shorten(std::vector<LayoutError>& errors, bool has_more) {
  if (errors.size() <= most_errors_of_no_layout) return;
  const std::size_t count = errors.size() - most_errors_of_no_layout;
  errors.resize(most_errors_of_no_layout);
  errors.push_back({{},
                    "is no layout, which has [layout] and [[item]]: " + std::to_string(count) +
                        (has_more ? " or more" : "") + " further errors"});
}

}  // namespace

LayoutReading parse_layout(std::string_view text, const std::string& file,
                           std::optional<RecordCount> records, MissingLists lists) {
  LayoutReading reading;
  Layout& layout = reading.layout;
  std::vector<LayoutError>& errors = reading.errors;
  layout.file = file;
  layout.text = text;
  if (!may_fit(text)) {
    errors.push_back({{}, "has too many keys and values for its size"});
    return reading;
  }
  toml::table table;
  if (const auto error = parse_syntax(text, table)) {
    errors.push_back(*error);
    return reading;
  }
  TableReader root(table, "the layout", errors);
  root.require("layout", "a table [layout]");
  if (const toml::table* header = root.table("layout")) {
    read_header(*header, records, layout, errors);
  }
  read_items(root, lists, layout, errors);
  root.reject_unknown_keys();
  if (!layout.settings.empty()) {
    const auto conflicts = find_file_conflicts(layout, {});
    errors.insert(errors.end(), conflicts.begin(), conflicts.end());
  }
  std::stable_sort(errors.begin(), errors.end(), [](const LayoutError& a, const LayoutError& b) {
    return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
  });
  const bool has_more = errors.size() >= most_layout_errors;
  if (!root.has("layout") && !root.has("item")) {
    shorten(errors, has_more);
  } else if (has_more) {
    errors.push_back({errors.back().place, "further errors are left out"});
  }
  return reading;
}

LayoutReading read_layout(const std::string& file, std::optional<RecordCount> records,
                          MissingLists lists) {
  std::string text;
  if (const auto failure = platform::read_file(file, text, most_layout_bytes)) {
    check_interruption();
    LayoutReading reading;
    reading.layout.file = file;
    reading.errors.push_back({{}, "cannot be read: " + failure.message()});
    return reading;
  }
  return parse_layout(text, file, records, lists);
}

LayoutReading read_plain_layout(const std::string& file, std::optional<RecordCount> records,
                                MissingLists lists) {
  LayoutReading reading = read_layout(file, records, lists);
  if (reading.errors.empty()) reading.errors = find_own_keys(reading.layout);
  return reading;
}

LayoutReading read_module_layout(const std::string& file, std::optional<RecordCount> records,
                                 MissingLists lists) {
  LayoutReading reading = read_plain_layout(file, records, lists);
  const Layout& layout = reading.layout;
  if (reading.errors.empty() && !layout.records.can_be_stored()) {
    reading.errors.push_back({layout.records_place,
                              (records ? "--records is " : "records is ") +
                                  std::to_string(layout.records.number()) + ", expected at most " +
                                  std::to_string(RecordCount::most_stored) +
                                  " for one file; \"korvex generate --part\" writes more in parts, "
                                  "\"korvex export\" in one file"});
  }
  return reading;
}

}  // namespace korvex::host
