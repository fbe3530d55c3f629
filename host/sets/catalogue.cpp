#include "host/sets/catalogue.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "platform/printable_text.h"

namespace korvex::sets {

namespace {

using Tables = std::vector<const Table*>;

// `is "x", expected one of "a", "b"`
Fault unexpected(Fault::Key key, std::string_view given, const std::set<std::string>& expected) {
  std::string text = given.empty() ? "is missing" : "is " + platform::quoted(given);
  const char* before = ", expected one of ";
  for (const std::string& name : expected) {
    text += before + platform::quoted(name);
    before = ", ";
  }
  return {key, std::move(text)};
}

// What another version holds is not known.
std::optional<Fault> find_fault(std::int32_t version) {
  if (version >= 1 && version <= newest_version) return std::nullopt;
  return Fault{Fault::Key::version, "is " + std::to_string(version) + ", expected one from 1 to " +
                                        std::to_string(newest_version)};
}

std::vector<std::string_view> columns_of(const Table& table) {
  const ValueTable texts = read_table(table);
  return {texts.columns().begin(), texts.columns().end()};
}

bool is_in_other(const Table& table, std::string_view language) {
  return !table.language.empty() && table.language != language;
}

// A name with its parts: of "people.given" the set, and the column, which may be left out.
struct Name {
  std::string_view set;
  std::string_view column;
};

Name parse_name(std::string_view name) {
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) return {name, {}};
  return {name.substr(0, dot), name.substr(dot + 1)};
}

}  // namespace

Tables tables_of_version(std::int32_t version) {
  Tables tables;
  for (const Table& table : built_in_tables()) {
    if (table.version > version) continue;
    if (!tables.empty() && tables.back()->key() == table.key()) tables.pop_back();
    tables.push_back(&table);
  }
  for (const Table& table : user_tables().tables) tables.push_back(&table);
  std::sort(tables.begin(), tables.end(),
            [](const Table* left, const Table* right) { return left->key() < right->key(); });
  return tables;
}

std::variant<Tables, Fault> find_tables_in(std::string_view language, std::int32_t version) {
  if (auto fault = find_fault(version)) return std::move(*fault);
  Tables tables = tables_of_version(version);
  std::set<std::string> languages;
  for (const Table* table : tables) {
    if (!table->language.empty()) languages.emplace(table->language);
  }
  if (!languages.contains(std::string(language))) {
    return unexpected(Fault::Key::language, language, languages);
  }
  std::erase_if(tables, [&](const Table* table) { return is_in_other(*table, language); });
  return tables;
}

namespace {

// Messages call the name as it was given.
std::variant<Tables, Fault> look_for_tables(std::string_view name, std::string_view given,
                                            std::string_view language, std::int32_t version) {
  if (auto fault = find_fault(version)) return std::move(*fault);
  const auto [set, column] = parse_name(name);
  for (const UserFault& fault : user_tables().faults) {
    const bool is_wanted = fault.language.empty() || fault.language == language;
    if (fault.set == set && is_wanted) {
      return Fault{Fault::Key::set, "cannot be read: " + fault.text};
    }
  }
  const bool has_dot = set.size() < name.size();
  std::set<std::string> sets;
  std::set<std::string> columns;    // of the set
  std::set<std::string> languages;  // in which it has what is wanted
  Tables found;
  for (const Table* table : tables_of_version(version)) {
    sets.emplace(table->set);
    if (table->set != set) continue;
    const std::vector<std::string_view> titles = columns_of(*table);
    for (const std::string_view title : titles) {
      columns.insert(std::string(set) + "." + std::string(title));
    }
    if (has_dot && std::find(titles.begin(), titles.end(), column) == titles.end()) continue;
    if (!table->language.empty()) languages.emplace(table->language);
    if (!is_in_other(*table, language)) found.push_back(table);
  }
  if (columns.empty()) return unexpected(Fault::Key::set, given, sets);
  if (has_dot && !columns.contains(std::string(name))) {
    return unexpected(Fault::Key::set, given, columns);
  }
  if (found.empty()) return unexpected(Fault::Key::language, language, languages);
  return found;
}

}  // namespace

std::variant<Tables, Fault> find_tables(std::string_view name, std::string_view language,
                                        std::int32_t version) {
  return look_for_tables(name, name, language, version);
}

std::variant<Column, Fault> find_column(std::string_view name, std::string_view language,
                                        std::int32_t version) {
  // Without its column a set is as wrong as with one that it does not have.
  const std::string_view column = parse_name(name).column;
  const std::string whole = column.empty() ? std::string(name) + "." : std::string(name);
  auto found = look_for_tables(whole, name, language, version);
  if (auto* fault = std::get_if<Fault>(&found)) return std::move(*fault);
  // The one in the language, should there also be one for all.
  const Table* table = std::get<Tables>(found).back();
  return Column{table, *read_table(*table).find_column(column)};
}

ValueTable read_table(const Table& table) {
  // Each was read before: by scripts/check-sets, or when the user's were found.
  return std::get<ValueTable>(ValueTable::read(table.text));
}

}  // namespace korvex::sets
