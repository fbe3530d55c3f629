#include "host/imports/database_model.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "host/databases/sql_names.h"
#include "host/imports/partition_facts.h"
#include "host/process/signals.h"
#include "host/text/any_case.h"

namespace korvex::host {

namespace {

// Beyond this the number of rows says no more than that there are many.
constexpr std::int64_t most_counted_rows = 10'000'000;

char folded(char letter) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

// Goes back to the last `*` where a text does not fit on.
bool fits(std::string_view pattern, std::string_view text) {
  std::size_t at = 0;
  std::size_t star = std::string_view::npos;
  std::size_t star_text = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (at < pattern.size() && pattern[at] == '*') {
      star = at++;
      star_text = i;
    } else if (at < pattern.size() && folded(pattern[at]) == folded(text[i])) {
      ++at;
      ++i;
    } else if (star != std::string_view::npos) {
      at = star + 1;
      i = ++star_text;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

bool names(const std::string& pattern, const std::string& table) {
  const std::string bare = name_parts(table).back().text;
  return fits(pattern, table) || fits(pattern, bare);
}

bool any_names(const std::vector<std::string>& patterns, const std::string& table) {
  return std::any_of(patterns.begin(), patterns.end(),
                     [&](const std::string& pattern) { return names(pattern, table); });
}

}  // namespace

std::size_t DatabaseModel::find(const ForeignKey& key) const {
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const ImportedTable& table) {
    const std::string& name = table.schema.quoted_name;
    return name == key.quoted_table || (is_sqlite && is_same_in_any_case(name, key.quoted_table));
  });
  return static_cast<std::size_t>(found - tables.begin());
}

ImportedTable read_table(Database& database, const std::string& name, bool is_sqlite) {
  ImportedTable table;
  table.schema = database.read_schema(name);
  table.rules = database.read_rules(table.schema);
  table.facts = read_facts(table.schema, table.rules, is_sqlite);
  add_partition_facts(table.schema, table.rules, table.facts);
  table.rows = database.count_rows(table.schema, most_counted_rows);
  return table;
}

DatabaseModel read_database(Database& database, const TableChoice& choice, bool is_sqlite) {
  DatabaseModel model;
  model.is_sqlite = is_sqlite;
  const std::vector<ListedTable> listed = database.list_tables();
  for (const auto* patterns : {&choice.tables, &choice.except, &choice.keep}) {
    for (const std::string& pattern : *patterns) {
      const bool is_known = std::any_of(listed.begin(), listed.end(), [&](const auto& table) {
        return names(pattern, table.name);
      });
      if (!is_known) model.unmatched.push_back(pattern);
    }
  }
  for (const ListedTable& each : listed) {
    check_interruption();
    const bool is_kept = any_names(choice.keep, each.name);
    const bool is_chosen = (choice.tables.empty() || any_names(choice.tables, each.name)) &&
                           !any_names(choice.except, each.name);
    if (!each.left_out.empty()) {
      if (is_chosen) model.left_out.push_back({each.name, each.left_out});
      continue;
    }
    ImportedTable table = read_table(database, each.name, is_sqlite);
    // What is not asked for keeps its rows, and others may refer to them.
    table.is_kept = is_kept || !is_chosen;
    const auto& columns = table.schema.columns;
    const bool has_columns = std::any_of(columns.begin(), columns.end(),
                                         [](const auto& column) { return !column.is_generated; });
    if (!has_columns && !table.is_kept) {
      model.left_out.push_back({each.name, "no column to fill"});
      table.is_kept = true;
    }
    model.tables.push_back(std::move(table));
  }
  return model;
}

}  // namespace korvex::host
