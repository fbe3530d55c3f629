#include <algorithm>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <optional>
#include <system_error>

#include "host/sets/tables.h"
#include "host/sets/value_table.h"
#include "platform/file.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::sets {

namespace {

constexpr std::string_view extension = ".tsv";
constexpr std::uintmax_t max_table_size = 64 * 1024 * 1024;

// Empty when the user has no folder for it.
std::string sets_folder() {
  const auto folder_in = [](const char* variable) -> std::string {
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? value : "";
  };
  constexpr std::string_view ours = "korvex/sets";
  if (const std::string data = folder_in("XDG_DATA_HOME"); !data.empty()) {
    return platform::join_path(data, ours);
  }
  const std::string home = folder_in("HOME");
  return home.empty() ? "" : platform::join_path(platform::join_path(home, ".local/share"), ours);
}

// Names and texts of what was read are here as long as the program runs.
std::string_view keep(std::string text) {
  static std::deque<std::string> texts;
  return texts.emplace_back(std::move(text));
}

bool is_name(std::string_view word) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz";
  constexpr std::string_view others = "0123456789_-";
  return !word.empty() && letters.find(word.front()) != std::string_view::npos &&
         std::all_of(word.begin(), word.end(), [&](char sign) {
           return letters.find(sign) != std::string_view::npos ||
                  others.find(sign) != std::string_view::npos;
         });
}

// Of SET, SET.LANGUAGE, SET.PART and SET.PART.LANGUAGE what is there; nothing for another name. A
// language has two letters, a part has more.
std::optional<Table> parse_file_name(std::string_view name) {
  constexpr std::size_t language_size = 2;
  std::vector<std::string_view> words;
  for (std::size_t dot = 0; dot != std::string_view::npos;) {
    dot = name.find('.');
    words.push_back(name.substr(0, dot));
    if (dot != std::string_view::npos) name.remove_prefix(dot + 1);
  }
  if (!std::all_of(words.begin(), words.end(), is_name)) return std::nullopt;
  Table table;
  table.set = words.front();
  words.erase(words.begin());
  if (!words.empty() && words.back().size() == language_size) {
    table.language = words.back();
    words.pop_back();
  }
  if (!words.empty() && words.back().size() > language_size) {
    table.part = words.back();
    words.pop_back();
  }
  if (!words.empty()) return std::nullopt;
  return table;
}

// What is wrong with the table; else reads it.
std::string read_table_of_user(const std::string& path, Table& table) {
  const std::span<const Table> built_in = built_in_tables();
  if (std::any_of(built_in.begin(), built_in.end(),
                  [&](const Table& ours) { return ours.key() == table.key(); })) {
    return ": a built-in table has this name, which never changes";
  }
  std::error_code failure;
  const std::uintmax_t size = std::filesystem::file_size(path, failure);
  if (!failure && size > max_table_size) return ": more than 64 MiB";
  std::string text;
  if (failure || platform::read_file(path, text)) return ": cannot be read";
  table.text = keep(std::move(text));
  const auto values = ValueTable::read(table.text);
  if (const auto* fault = std::get_if<TableFault>(&values)) {
    return ":" + std::to_string(fault->line) + ": " + fault->text;
  }
  return {};
}

UserTables read_folder() {
  UserTables found;
  const std::string folder = sets_folder();
  if (folder.empty()) return found;
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const std::string path = entry->path();
    std::error_code unknown;
    if (!path.ends_with(extension) || !entry->is_regular_file(unknown)) continue;
    std::optional<Table> table = parse_file_name(keep(std::string(platform::stem(path))));
    if (!table) {
      found.faults.push_back(
          {"", "", platform::printable(path) + ": expected a name SET.tsv or SET.LANGUAGE.tsv"});
      continue;
    }
    const std::string fault = read_table_of_user(path, *table);
    if (fault.empty()) {
      found.tables.push_back(*table);
    } else {
      found.faults.push_back({table->set, table->language, platform::printable(path) + fault});
    }
  }
  // Folders have no order of their own.
  std::sort(found.faults.begin(), found.faults.end(),
            [](const UserFault& left, const UserFault& right) { return left.text < right.text; });
  return found;
}

}  // namespace

const UserTables& user_tables() {
  static const UserTables tables = read_folder();
  return tables;
}

}  // namespace korvex::sets
